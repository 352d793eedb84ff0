#!/bin/sh
# Registers the component in Wine's registry, or takes it out again without a trace, but for what hosts of 32 bits need
# that have one of their own.
#
#   registration.sh register|unregister WINE LIBRARY
set -u
wine=$2 library="Z:$3"
key='HKLM\Software\Classes'
class="$key\\CLSID\\{8C3084B3-62BE-470E-BFEC-778A0EDAAF72}"
wrong() { echo "$*"; exit 1; }
entries() { # how many lines of the registry name the component
  "$wine" reg export "$key" classes.reg /y >reg.log 2>&1 || { cat reg.log; exit 1; }
  tr -d '\0' <classes.reg | grep -ci "$1"
}
"$wine" regsvr32 /s "$library" || wrong "cannot register"
[ "$(entries kova_drawer)" -gt 0 ] || wrong "nothing is registered"
[ "$1" = unregister ] || exit 0
"$wine" reg add "$class" /ve /d other /f /reg:32 >reg.log 2>&1 || { cat reg.log; exit 1; }
"$wine" regsvr32 /s /u "$library" || wrong "cannot unregister one of two kinds"
[ "$(entries 'Kova_Drawer_Man.cls_Kova_Drawer_Man')" -gt 0 ] || wrong "the other kind has lost the class's name"
[ "$(entries '4\.a\\\(0\|409\)\\win64')" = 0 ] || wrong "the type library's file is still there"
"$wine" reg delete "$class" /f /reg:32 >reg.log 2>&1 || { cat reg.log; exit 1; }
"$wine" regsvr32 /s "$library" && "$wine" regsvr32 /s /u "$library" || wrong "cannot unregister"
[ "$(entries kova_drawer)" = 0 ] || wrong "$(entries kova_drawer) entries are left"
