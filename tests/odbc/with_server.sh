#!/bin/sh
# Runs a command while a server answers from an embedded database that both may write to, and tells it of them:
# KOVA_SERVER is the connection string, KOVA_SERVED_SHOP the file, as Wine sees it.
#
#   [KOVA_SHOP=sample] with_server.sh KOVA_TEST_SERVER COMMAND...
server=$1
shift
folder=$(mktemp -d) || exit 1
: >"$folder/shop"
"$server" --database "${KOVA_SHOP:-$folder/shop}" </dev/null >"$folder/connection" &
trap 'kill $!; rm -rf "$folder"' EXIT
while [ ! -s "$folder/connection" ]; do
    kill -0 $! || exit 1
    sleep 0.05
done
KOVA_SERVER=$(cat "$folder/connection") KOVA_SERVED_SHOP=Z:$folder/shop "$@"
