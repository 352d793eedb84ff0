#!/bin/sh
# A bus, a screen and a window manager for bus_test.py. Python is the system's, which has the bus's own package.
#
#   bus.sh TREE LIBRARY FOLDER
set -e
tree=$1 library=$2 folder=$3
rm -rf "$folder"
mkdir -m 700 "$folder"
export KOVA_LIBRARY="$library" LD_LIBRARY_PATH="${library%/*}" PYTHONPATH="$tree/bindings/python" PYTHONUNBUFFERED=1
export KOVA_LOG="$folder/log" XDG_RUNTIME_DIR="$folder" XDG_CONFIG_HOME="$folder" HOME="$folder"
export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 LC_ALL=C.UTF-8
exec xvfb-run -a -s "-screen 0 1280x800x24" dbus-run-session -- \
  sh -c 'openbox & "$@"; result=$?; kill $!; exit $result' sh \
  /usr/bin/python3 "$tree/tests/accessibility/bus_test.py" "$tree" "$folder"
