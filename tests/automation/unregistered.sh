#!/bin/sh
# What hosts do through automation, with the library and its manifest beside their programs and nothing registered.
#
#   unregistered.sh WINE SCRIPT_HOST EARLY_BOUND LIBRARY MANIFEST FOLDER
set -u
wine=$1 here=$(dirname "$0") beside=$6/beside
rm -rf "$beside" && mkdir -p "$beside" && cp "$2" "$beside/script_host.exe" && cp "$3" "$beside/early_bound.exe" &&
  cp "$4" "$beside" || exit 1
# Without manifests the class is not to be found, or the rest would show nothing.
"$wine" "$beside/early_bound.exe" >"$beside/without" && { echo "registered, or found without a manifest"; exit 1; }
grep -q '^create 80040154 ' "$beside/without" || { cat "$beside/without"; exit 1; }
cp "$5" "$beside" || exit 1
for host in script_host early_bound; do
  cp "$here/../../examples/03_automation/till.exe.manifest" "$beside/$host.exe.manifest" || exit 1
done
sh "$here/automation.sh" "$wine" "$beside/script_host.exe" "$beside/early_bound.exe" "" "" "$6/unregistered"
