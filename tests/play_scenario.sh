#!/bin/sh
# Plays one scenario and compares what a person outside sees with what is expected.
#
#   play_scenario.sh KOVA_HOST NAME.scenario headless|qt FOLDER [server|automation]
#
# Beside NAME.scenario lie
#   NAME.trace   the expected standard output, byte for byte
#   NAME.args    more arguments for the host, one line of shell words; $scenarios is the folder of the scenario,
#                $output the empty folder in which the host runs (optional)
#   NAME.exit    the expected exit status (optional, otherwise 0)
#   NAME.err     lines of which each must occur in standard error (optional)
#   NAME.embedded  why the scenario makes sense on the embedded database alone (optional)
#
# With "server" the error texts in the log may be those of a SQL Server. With "automation" the host talks to the component
# through Windows' automation.
set -u
host=$1 scenario=$2 interface=$3 database=${5:-embedded}
base=${scenario%.scenario}
scenarios=$(dirname "$scenario")
output=$4/$(basename "$base")-$interface-$database
rm -rf "$output" && mkdir -p "$output" && cd "$output" || exit 1

set --
[ ! -f "$base.args" ] || eval "set -- $(cat "$base.args")"
[ "$database" != automation ] || set -- "$@" --through automation
${KOVA_EMULATOR:-} "$host" --script "$scenario" --ui "$interface" "$@" >printed 2>errors
status=$?
tr -d '\r' <printed >trace

wrong=0
expected=0
[ ! -f "$base.exit" ] || expected=$(cat "$base.exit")
if [ "$status" -ne "$expected" ]; then
    echo "exit status $status, expected $expected"
    wrong=1
fi
if [ "$database" = server ]; then
    awk 'function label(line) { match(line, /^log "[^"]*"/); return substr(line, 1, RLENGTH) }
        NR == FNR { expected[FNR] = $0; next }
        / \(SQLSTATE [0-9A-Z]+, native error [0-9]+\)" number=/ && label($0) == label(expected[FNR]) {
            print expected[FNR]
            next
        }
        { print }' "$base.trace" trace >comparable && mv comparable trace
fi
diff -u --label expected "$base.trace" --label played trace || wrong=1
if [ -f "$base.err" ]; then
    while IFS= read -r line; do
        if ! grep -qF -e "$line" errors; then
            echo "not in standard error: $line"
            wrong=1
        fi
    done <"$base.err"
fi
if [ "$wrong" -ne 0 ] && [ -s errors ]; then
    echo "standard error:"
    cat errors
fi
exit $wrong
