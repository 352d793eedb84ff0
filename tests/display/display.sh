#!/bin/sh
# A screen, a window manager and an accessibility bus for a test in Python. Python is the system's, which has the bus's
# own package.
#
#   display.sh TREE LIBRARY FOLDER TEST [ARGUMENT...]    runs TEST TREE FOLDER ARGUMENT...
set -e
tree=$1 library=$2 folder=$3 test=$4
shift 4
rm -rf "$folder"
mkdir -m 700 "$folder"
export KOVA_LIBRARY="$library" LD_LIBRARY_PATH="${library%/*}" PYTHONPATH="$tree/bindings/python" PYTHONUNBUFFERED=1
export KOVA_LOG="$folder/log" XDG_RUNTIME_DIR="$folder" XDG_CONFIG_HOME="$folder" HOME="$folder"
export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 LC_ALL=C.UTF-8
exec xvfb-run -a -s "-screen 0 1280x800x24" dbus-run-session -- \
  sh -c 'openbox & "$@"; result=$?; kill $!; exit $result' sh \
  /usr/bin/python3 "$tree/tests/display/$test" "$tree" "$folder" "$@"
