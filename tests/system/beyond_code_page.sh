#!/bin/sh
# A till whose folder, script, database, log and note have letters that the code page of Windows has not.
#
#   beyond_code_page.sh KOVA_HOST FOLDER
folder="$2/Kassen Zürich Ωμέγα"
rm -rf "$folder" && mkdir -p "$folder/Ημερολόγιο" && cp "$1" "$folder/Ταμείο.exe" && cd "$folder" || exit 1
: >Πωλήσεις.db # a database without tables: each query is a record of the log
printf '%s\n' create connect 'show 0' 'focus txtNote' 'type "Ωμέγα €"' 'dump control txtNote' 'halt' >Βάρδια.scenario
$KOVA_EMULATOR ./Ταμείο.exe --script Βάρδια.scenario --database Πωλήσεις.db --log-folder Ημερολόγιο >printed 2>errors
status=$?
[ $status -eq 2 ] && grep -qF 'text="Ωμέγα €"' printed && grep -qF 'Βάρδια.scenario:7: not a command: halt' errors &&
    grep -qF 'no such table' Ημερολόγιο/logfile.log && exit
echo "exit status $status"
cat printed errors Ημερολόγιο/*
exit 1
