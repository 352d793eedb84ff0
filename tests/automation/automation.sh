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
for apartment in '' other; do
  # shellcheck disable=SC2086
  for script in movement.vbs movement.js events.vbs; do
    compared $script "$script_host" "$here/$script" $apartment
  done
done
compared early_bound "$early_bound"
# Wine carries no error object to another apartment, and so no text of what failed.
as_here() { sed -E '/^(early|text) 800a0201/s/\[.*/[] /'; }
compared early_bound "$early_bound" sta
compared early_bound "$early_bound" mta
as_here() { cat; }
compared calls.txt "$raw_host" calls "$here/calls.txt"
compared nothing "$raw_host" nothing
compared lists "$raw_host" lists
exit $failed
