#!/bin/sh
# What the type library is compiled from has the identifiers, members and numbers of type_library.trace, which Windows tells of
# the compiled one.
#
#   frozen.sh KOVA_WRITE_IDL
set -u
trace=$(dirname "$(readlink -f "$0")")/type_library.trace
"$1" frozen.idl frozen.manifest amd64 || exit 1
sed -nE 's/^ +slot .* id ([0-9]+) kind ([0-9]).* ([A-Za-z]+)\(.*/\1 \2 \3/p; s/^ +([A-Za-z_]+ = [0-9]+)$/\1/p
    s/^[a-z]*([A-Za-z_0-9]*) (\{.*\}).*/\2/p' "$trace" >frozen.expected
sed -nE 's/^ +\[id\(([0-9]+)\)\] (HRESULT|void) ([A-Za-z]+)\(.*/\1 1 \3/p; s/^ +\[id\(([0-9]+)\), propget\] (HRESULT|void) ([A-Za-z]+)\(.*/\1 2 \3/p
    s/^ +\[id\(([0-9]+)\), propput\] (HRESULT|void) ([A-Za-z]+)\(.*/\1 4 \3/p; s/^ +(kDM[A-Za-z_]+ = [0-9]+),$/\1/p
    /00001550/!s/.*uuid\(([-0-9A-F]+)\).*/{\1}/p' frozen.idl >frozen.written
[ "$(wc -l <frozen.written)" -gt 50 ] || { echo "too few lines"; exit 1; }
diff -u frozen.expected frozen.written
