#!/bin/sh
# Plays what hosts do through automation alone, and compares what they saw with what is written here.
#
#   automation.sh WINE SCRIPT_HOST EARLY_BOUND FOLDER
set -u
wine=$1 script_host=$2 early_bound=$3 played=$4
here=$(dirname "$0")
mkdir -p "$played"
failed=0
compared() { # NAME COMMAND...
  name=$1
  shift
  "$wine" "$@" >"$played/$name.out" || { echo "$name failed"; failed=1; }
  tr -d '\r' <"$played/$name.out" | diff -u --label expected "$here/$name.trace" --label seen - || failed=1
}
compared movement.vbs "$script_host" "$here/movement.vbs"
compared movement.js "$script_host" "$here/movement.js"
compared early_bound "$early_bound"
exit $failed
