#!/bin/sh
# Cashiers at the dialog of hosts through automation, and at the examples' tills, of which all say the same.
# KOVA_SERVER is the connection text.
#
#   dialog.sh WINE SCRIPT_HOST EARLY_BOUND_TILL LATE_BOUND_TILL MANIFEST FOLDER
set -u
wine=$1 script_host=$2 early_bound=$3 late_bound=$4 manifest=$5 played=$6
here=$(dirname "$0")
examples=$here/../../examples/03_automation
mkdir -p "$played"
failed=0
compared() { # NAME TRACE: what the host said; a day is that of the test
  tr -d '\r' <"$played/$1.out" | sed -E 's#[0-9]+/[0-9]+/20[0-9]{2}#TODAY#' |
    diff -u --label expected "$here/$2.trace" --label "$1" - || failed=1
}
for script in dialog.vbs dialog.js; do
  "$wine" "$script_host" "$here/$script" "$KOVA_SERVER" >"$played/$script.out" || { echo "$script failed"; failed=1; }
  compared $script $script
done
till() { # NAME COMMAND...
  name=$1
  shift
  "$wine" "$script_host" "$here/cashier.vbs" >"$played/cashier" &
  "$wine" "$@" "$KOVA_SERVER" >"$played/$name.out" || { echo "$name failed"; failed=1; }
  wait $! || { cat "$played/cashier"; failed=1; }
  compared "$name" till
}
till till.vbs "$script_host" "$examples/till.vbs"
till till.js "$script_host" "$examples/till.js"
till early_bound "$early_bound"
till late_bound "$late_bound"
# What the languages without the type library have to repeat.
# shellcheck disable=SC2013
for identifier in $(grep -ohE '[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}' "$examples"/Till.*); do
  grep -q "$identifier" "$manifest" || { echo "an example's own identifier: $identifier"; failed=1; }
done
exit $failed
