#!/bin/sh
# The server as a person uses it: a host finds its shop there, each fault that is asked for, and its login refused.
#
#   test_server.sh KOVA_TEST_SERVER KOVA_HOST FOLDER
set -u
server=$1 host=$2
rm -rf "$3" && mkdir -p "$3" && cd "$3" || exit 1

mkfifo asked
"$server" --port 0 --database sample --user anna --password 'a;b' <asked >connection 2>errors &
serving=$!
trap 'kill $serving 2>/dev/null' EXIT
exec 3>asked
while [ ! -s connection ]; do
    kill -0 $serving || exit 1
    sleep 0.05
done

asked=1
# LINE: asks for it, and waits until it is carried out.
ask() {
    echo "$1" >&3
    asked=$((asked + 1))
    until [ "$(grep -c . connection)" -eq "$asked" ]; do
        kill -0 $serving || exit 1
        sleep 0.02
    done
}
# PIECE: the payments that a till shows now, or what it says of a failure, must hold it.
played_holds() {
    printf '%s\n' "now 2026-11-16T10:05:00" "connect" "show 0" "dump grid Pulsantiera_Pagamenti" "tab 1" "dump log" |
        sed '1i create' | ${KOVA_EMULATOR:-} "$host" --script - --connection "$(head -n 1 connection)" >played 2>>errors
    grep -qF -e "$1" played errors && return
    echo "not played: $1"
    cat played errors
    exit 1
}
played_holds 'caption="Bancomat"'
ask 'fail tabPagamenti 208 "no such table today"'
played_holds 'no such table today'
ask recover
ask 'fail Operation 50000 "half a list" after 2'
played_holds 'half a list'
ask recover
ask 'hang-up Operation half'
played_holds 'Unexpected EOF'
ask recover
ask 'hold tabPagamenti'
played_holds 'caption="Bancomat"' &
playing=$!
ask held
ask recover
wait $playing || exit 1
echo frobnicate >&3
echo 'recover now' >&3
ask 'log-ins refuse'
played_holds "Login failed for user 'anna'"
echo quit >&3
wait $serving
[ $? -eq 0 ] && grep -q 'no such command: frobnicate' errors && [ "$(grep -c . connection)" -eq "$asked" ] || exit 1
"$server" --tds-version 8.0 >/dev/null 2>&1
[ $? -eq 2 ]
