#!/bin/sh
# How the player of scenarios reads lines: what becomes of them, and which it refuses.
#
#   scenario_lines.sh KOVA_HOST
host=$1
wrong=0
seen=$(printf '%s\n' '  # nothing but this' 'set ValutaAziendale "a\"b\\c\nd\re\tf"# and this' 'get ValutaAziendale' \
    'set ValutaAziendale C:\new' 'get ValutaAziendale' 'set ValutaAziendale "#"' 'get ValutaAziendale' 'set idCassa 50# till' \
    'get idCassa' 'sink on' 'now 2026-02-28T10:00:00' 'salva 1 1.5 E n 32767 2 True' 'wait 0' |
    { printf '\357\273\277create\r\n\n' && cat; } | "$host" --script -) || wrong=1
expected='ValutaAziendale = "a\"b\\c\nd\re\tf"
ValutaAziendale = "C:\\new"
ValutaAziendale = "#"
idCassa = 50'
[ "$(printf '%s\n' "$seen" | grep ' = ')" = "$expected" ] || { printf 'read: %s\n' "$seen"; wrong=1; }
# LINE: must be refused as it stands, not as a command that is not known.
refused() {
    printf 'create\n%b\n' "$1" | "$host" --script - >/dev/null 2>refused
    [ $? -eq 2 ] && ! grep -q 'command' refused && return
    echo "not refused: $1"
    cat refused
    wrong=1
}
for line in '"open' '"open\\' '"open\\"' '"a\\x"' '"a"b"' 'a"b"' '"a""b"' '\0377' '"\0303"'; do refused "sql $line"; done
for word in '""' 1x '" 1"' 1.5 2147483648; do refused "set idCassa $word"; done
for word in '""' 12,5 nan inf 1e999; do refused "salva 1 $word E n 1 2 True"; done
refused 'salva 1 1.5 E n 32768 2 True'
for word in true 1 '""'; do refused "set ChiusuraAutomatica $word"; done
refused 'wait -1'
refused 'sink maybe'
for word in 2026-02-29T10:00:00 2026-13-01T10:00:00 2026-11-16T24:00:00 '"2026-11-16 10:00:00"' 2026-11-16T10:00 \
    2026-11-16T10:00:0x; do
    refused "now $word"
done
exit $wrong
