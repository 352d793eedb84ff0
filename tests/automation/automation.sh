#!/bin/sh
# Plays what hosts do through automation alone, and compares what they saw with what is written here.
#
#   automation.sh WINE SCRIPT_HOST EARLY_BOUND RAW_HOST FOLDER
set -u
wine=$1 script_host=$2 early_bound=$3 raw_host=$4 played=$5
here=$(dirname "$0")
mkdir -p "$played"
failed=0
compared() { # NAME COMMAND...
  name=$1
  shift
  "$wine" "$@" >"$played/$name.out" || { echo "$name failed: $*"; failed=1; }
  as_here <"$here/$name.trace" >"$played/$name.trace"
  tr -d '\r' <"$played/$name.out" | diff -u --label expected "$played/$name.trace" --label "$*" - || failed=1
}
as_here() { cat; }
scripts="movement.vbs movement.js events.vbs"
for script in $scripts; do
  compared $script "$script_host" "$here/$script"
done
compared early_bound "$early_bound"
compared raw_host "$raw_host" "$here/calls.txt"
for end in release 'elsewhere released' returning exit 'at once' apartment event thread; do
  as_here() { sed -n "/^open/p;s/^$end: //p"; }
  compared end.vbs "$script_host" "$here/end.vbs" "$end"
done
# Wine carries no error object to another apartment, and so no text of what failed; it keeps the class object there.
as_here() { sed -E '/^(early|text) 800a0201/s/\[.*/[] /;s/ gone / held /g;s/let go 1/let go 0/'; }
for script in $scripts; do
  compared $script "$script_host" "$here/$script" elsewhere
done
compared early_bound "$early_bound" sta
compared early_bound "$early_bound" mta
exit $failed
