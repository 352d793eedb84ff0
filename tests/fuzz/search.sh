#!/bin/sh
# Searches for inputs that break a target, beginning with the kept ones, and keeps the smallest set that reaches as much.
#
#   search.sh FUZZ TARGET SECONDS
set -u
fuzz=$1 target=$2 seconds=$3
kept=$(dirname "$0")/$target.inputs
work=$(mktemp -d)
mkdir "$work/old" "$work/found" "$work/new" "$work/failures"
[ ! -f "$kept" ] || python3 -c "import sys
for i, line in enumerate(sys.stdin):
    open(f'$work/old/{i}', 'wb').write(bytes.fromhex(line))" <"$kept" || exit 1
export KOVA_FUZZ="$target" KOVA_LOG=/dev/null QT_QPA_PLATFORM=offscreen
"$fuzz" -max_total_time="$seconds" -max_len=160 -timeout=10 -print_final_stats=1 -artifact_prefix="$work/failures/" "$work/found" "$work/old"
status=$?
"$fuzz" -merge=1 -max_len=160 "$work/new" "$work/found" "$work/old" 2>/dev/null
# Fifty, from the shortest to the longest, are enough to notice what breaks; each is played with all its beginnings.
find "$work/new" -type f -size +0 -printf '%s %p\n' | sort -n | cut -d ' ' -f 2 >"$work/all"
step=$(($(wc -l <"$work/all") / 50 + 1))
for file in $(awk -v step=$step 'NR % step == 0' "$work/all"); do
    od -An -v -tx1 "$file" | tr -d ' \n'
    echo
done >"$kept"
for file in "$work"/failures/*; do
    [ ! -f "$file" ] || { echo "an input that breaks it:"; od -An -v -tx1 "$file" | tr -d ' \n'; echo; }
done
rm -rf "$work"
exit $status
