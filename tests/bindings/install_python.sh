#!/bin/sh
# Installs the package from the tree as a host's programmer would, without a network, and checks its types.
#
#   install_python.sh PYTHON PACKAGE FOLDER [MYPY FILE...]
set -eu
python=$1 package=$2 folder=$3
shift 3
rm -rf "$folder"
mkdir -p "$folder"
cp -r "$package" "$folder/source" # where it is built
"$python" -m pip install --quiet --no-index --no-build-isolation --no-deps --target "$folder/installed" "$folder/source"
[ -f "$folder/installed/kova_drawer_man/py.typed" ]
[ $# -eq 0 ] || MYPYPATH=$folder/installed "$1" --strict --cache-dir "$folder/types" "$folder/installed/kova_drawer_man" "$2" "$3"
