#!/bin/sh
# Plays a scenario's cashier in a host of any language, and compares what happened with the scenario's trace.
#
#   play.sh KOVA_HOST CASHIER NAME.scenario FOLDER HOST [ARGUMENT...]
#
# The host runs in the empty folder, where the file shop.db has the scenario's shop, and does what the scenario's host
# does. It prints a line for each event as the trace has it; what else it prints is its own affair. What it stores is
# expected in NAME.rows: it is read from the SQLite file journal.db, or the host prints it in such lines. CASHIER is the
# folder with the plugin generic/libkova-cashier.so.
set -u
kova_host=$1 cashier=$2 scenario=$3 folder=$4
shift 4
base=${scenario%.scenario}
here=$(cd "$(dirname "$0")" && pwd)
rows=$here/$(basename "$base").rows
schema=$here/../../resources/database/schema.sql
rm -rf "$folder" && mkdir -p "$folder" && cd "$folder" || exit 1

{
    printf 'sql "'
    sed 's/[\\"]/\\&/g; s/$/\\n/' "$schema" | tr -d '\n'
    printf '"\n'
    grep '^sql ' "$scenario"
} >shop.scenario
: >shop.db
"$kova_host" --script shop.scenario --database shop.db || exit 1

KOVA_LOG=$folder/log QT_PLUGIN_PATH=$cashier QT_QPA_GENERIC_PLUGINS=kova-cashier:$scenario "$@" >printed 2>errors
status=$?

[ ! -f journal.db ] || python3 "$here/rows.py" journal.db >>printed

# Events, and of the looks the captions, which the cashier has seen.
expected() {
    sed -nE 's/^control ([A-Za-z]+) .* caption=("[^"]*") .*/caption \1 \2/; /^(event|caption) /p' "$base.trace"
    [ ! -f "$rows" ] || cat "$rows"
}
expected | sort -s -k 1,1 >expected
cat printed errors | grep -E '^(event|caption|row) ' | sort -s -k 1,1 >played
wrong=0
[ "$status" = 0 ] || { echo "exit status $status" && wrong=1; }
[ -s expected ] || wrong=1
diff -u expected played || wrong=1
[ "$wrong" = 0 ] || cat errors
exit $wrong
