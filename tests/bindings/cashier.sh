#!/bin/sh
# Expects of the cashier to fail aloud when it cannot play its part.
#
#   cashier.sh CASHIER FOLDER PYTHON TILL
set -u
cashier=$1 folder=$2 python=$3 till=$4
rm -rf "$folder" && mkdir -p "$folder" && cd "$folder" || exit 1
export QT_PLUGIN_PATH="$cashier" KOVA_LOG="$folder/log"
wrong=0

# fails EXPECTED LINE HOST...: playing that line fails with those words.
fails() {
    expected=$1
    echo "$2" >one.scenario
    shift 2
    QT_QPA_GENERIC_PLUGINS=kova-cashier:one.scenario "$@" >printed 2>errors
    status=$?
    if [ "$status" != 3 ] || ! grep -q "^kova-cashier: one.scenario:1: $expected" errors; then
        echo "status $status instead of: $expected"
        cat errors
        wrong=1
    fi
}
: >shop.db
fails "nothing there to touch" "press noSuchButton" "$python" "$till" shop.db journal.db
fails "this cashier cannot do that" 'sort "importo"' "$python" "$till" shop.db journal.db
fails "the host has ended" "close" "$python" -c "import kova_drawer_man; kova_drawer_man.DrawerMan().close()"
exit $wrong
