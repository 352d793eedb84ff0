#!/bin/sh
# Plays what hosts do through automation alone, and compares what they saw with what is written here.
#
#   automation.sh WINE SCRIPT_HOST EARLY_BOUND RAW_HOST LIBRARY FOLDER
#
# With an empty RAW_HOST only what a host does in one apartment.
set -u
wine=$1 script_host=$2 early_bound=$3 raw_host=$4 library=$5 played=$6
here=$(dirname "$0")
mkdir -p "$played"
failed=0
compared() { # NAME COMMAND...
  name=$1
  shift
  "$wine" "$@" >"$played/$name.out" 2>"$played/$name.err" || { echo "$name failed: $*"; failed=1; }
  ! grep ':heap:' "$played/$name.err" || failed=1
  as_here <"$here/$name.trace" >"$played/$name.trace"
  tr -d '\r' <"$played/$name.out" | diff -u --label expected "$played/$name.trace" --label "$*" - || failed=1
}
as_here() { cat; }
export WINEDEBUG=-all,err+heap,warn+heap
scripts="movement.vbs movement.js events.vbs"
for script in $scripts; do
  compared $script "$script_host" "$here/$script"
done
compared early_bound "$early_bound"
[ -n "$raw_host" ] || exit $failed
# All of it is frozen.
compared type_library "$script_host" --list "$library"
# Windows checks all blocks of memory at every call of the raw host's, which takes long: what was written behind one, or
# into a freed one. One that is freed twice it tells of anyway.
"$wine" reg add "HKLM\\Software\\Microsoft\\Windows NT\\CurrentVersion\\Image File Execution Options\\$(basename "$raw_host")" \
  /v GlobalFlag /t REG_DWORD /d 0xF0 /f >/dev/null 2>&1 || { echo "cannot check memory"; failed=1; }
compared raw_host "$raw_host" "$here/calls.txt"
for end in release 'elsewhere released' returning exit 'at once' apartment event thread; do
  as_here() { sed -n "/^open/p;s/^$end: //p"; }
  compared end.vbs "$script_host" "$here/end.vbs" "$end"
done
# Wine carries no error object to another apartment, and so no text of what failed; it keeps the class object there.
as_here() { sed -E '/^(movement|text) 800a0201/s/\[.*/[] /;s/ gone / held /g;s/let go 1/let go 0/'; }
for script in $scripts; do
  compared $script "$script_host" "$here/$script" elsewhere
done
compared early_bound "$early_bound" sta
compared early_bound "$early_bound" mta
exit $failed
