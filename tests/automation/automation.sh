#!/bin/sh
# Registers the component in Wine's registry, plays what its hosts do through automation alone, and compares what they
# saw with what is written here. Afterwards the registry is as before.
#
#   automation.sh WINE LIBRARY SCRIPT_HOST EARLY_BOUND FOLDER
set -u
wine=$1 library=$2 script_host=$3 early_bound=$4 played=$5
here=$(dirname "$0")
mkdir -p "$played"
registered() {
  "$wine" reg export 'HKLM\Software\Classes' "$played/classes.reg" /y >"$played/reg.log" 2>&1 || cat "$played/reg.log"
  tr -d '\0' <"$played/classes.reg" | grep -ci kova_drawer
}
failed=0
same() { # NAME
  tr -d '\r' <"$played/$1.out" >"$played/$1.trace"
  diff -u "$here/$1.trace" "$played/$1.trace" || failed=1
}
"$wine" regsvr32 /s "Z:$library" || { echo "cannot register"; exit 1; }
[ "$(registered)" -gt 0 ] || { echo "nothing was registered"; exit 1; }
for script in movement.vbs movement.js; do
  "$wine" "$script_host" "$here/$script" >"$played/$script.out" || { echo "$script failed"; failed=1; }
  same "$script"
done
"$wine" "$early_bound" >"$played/early_bound.out" || failed=1
same early_bound
"$wine" regsvr32 /s /u "Z:$library" || { echo "cannot unregister"; failed=1; }
[ "$(registered)" = 0 ] || { echo "the registry still has the component"; failed=1; }
exit $failed
