#!/bin/sh
# Registers the component in Wine's registry, or takes it out again without a trace.
#
#   registration.sh register|unregister WINE LIBRARY
set -u
wine=$2
option=
[ "$1" = register ] || option=/u
"$wine" regsvr32 /s $option "Z:$3" || { echo "cannot $1"; exit 1; }
"$wine" reg export 'HKLM\Software\Classes' classes.reg /y >reg.log 2>&1 || { cat reg.log; exit 1; }
found=$(tr -d '\0' <classes.reg | grep -ci kova_drawer)
if [ "$1" = register ]; then [ "$found" -gt 0 ]; else [ "$found" = 0 ]; fi || { echo "$found entries after $1"; exit 1; }
