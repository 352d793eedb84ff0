#!/bin/sh
# What people get on Debian: installed into a bare Debian 12 of its own, used there by a cashier, by programmers and by a
# till's administrator, and removed again.
#
#   deb.sh PACKAGES FOLDER    the folder that ../../package filled, and one to work in
#
# The bare Debian, with what the packages depend on, is fetched once a week into ~/.cache/kova.
set -u
umask 022
here=$(dirname "$(readlink -f "$0")")
packages=$(realpath "$1") work=$(realpath -m "$2")
root=$work/root cache=${XDG_CACHE_HOME:-$HOME/.cache}/kova
asroot=$([ "$(id -u)" = 0 ] || echo sudo)
wrong=0

# check WHAT COMMAND...: says what is wrong when the command fails.
check() {
    what=$1
    shift
    "$@" || { echo "wrong: $what"; wrong=1; }
}
# within USER COMMAND: a command of the shell in the bare Debian, with processes of its own, which end with it.
within() {
    $asroot unshare --mount --pid --fork --kill-child --mount-proc="$root/proc" chroot "$root" \
        env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive QT_QPA_PLATFORM=offscreen \
        setpriv --reuid "$1" --regid "$1" --clear-groups --reset-env sh -c "export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen; $2"
}
quietly() { "$@" >"$work/log" 2>&1 || { cat "$work/log"; false; }; }

check "desktop entry" desktop-file-validate "$here/../../resources/desktop/kova-host.desktop"

# A bare Debian: what the packages depend on and suggest, and what a programmer has.
ours=$(for package in "$packages"/*.deb; do dpkg-deb -f "$package" Package; done | grep -v dbgsym)
needed=$(for package in "$packages"/*.deb; do dpkg-deb -f "$package" Depends Recommends | sed 's/^[A-Z][a-z]*: //'; echo; done |
    tr , '\n' | sed 's/^ *//; s/[ (|:].*//' | grep . | sort -u | grep -vxF "$ours" | grep -v dbgsym | paste -sd,)
programmer=g++,cmake,make,pkg-config,man-db,tdsodbc
bare=$cache/debian-12-$(date +%G-%V)-$(echo "$needed,$programmer" | cksum | cut -d ' ' -f 1).tar
if [ ! -f "$bare" ]; then
    echo "fetching a bare Debian with $needed,$programmer"
    mkdir -p "$cache" && rm -f "$cache"/debian-12-*.tar
    $asroot mmdebstrap --quiet --mode=root --format=tar --variant=minbase --include="$needed,$programmer" --customize-hook='chroot "$1" useradd -m till' \
        bookworm "$bare.part" && mv "$bare.part" "$bare" || exit 1
fi
$asroot rm -rf "$work" && mkdir -p "$root" && $asroot tar -C "$root" --numeric-owner -xf "$bare" || exit 1
mkdir "$root/packages" && cp "$packages"/*.deb "$root/packages" && rm "$root"/packages/*-dbgsym_*
lint() { lintian --allow-root -EIL +pedantic --fail-on none "$packages"/*.changes >"$work/lint" && ! grep -v '^N:' "$work/lint"; }
check "lintian" lint
cp -r "$here/../scenarios" "$here/../play_scenario.sh" "$here/../odbc/test_server.sh" "$here/manual.sh" "$root/home/till"

# snapshot NAME: the system's files, without the package manager's notes and caches, and what is kept for the user.
snapshot() {
    within root 'find / -xdev \( -path /proc -o -path /tmp -o -path /packages -o -path /home/till -o -path "/var/lib/dpkg/*" -o -path "/var/cache/*" -o -path "/var/log/*" \) \
        -prune -o -printf "%p %y %m %u %l\n" | sort; dpkg-query -W; find /etc -type f -exec md5sum {} + | sort' >"$work/$1"
}
snapshot before
check "install" quietly within root 'dpkg -i /packages/*.deb'
check "settled" within root 'test -z "$(dpkg --audit)" && ! ldd /usr/bin/kova-host | grep "not found"'
snapshot installed
check "files outside the packages' folders" sh -c '! diff "$1" "$2" | grep "^[<>] /" | grep -vE "^> /usr/(bin|include/kova|lib/(x86_64-linux-gnu|[a-z0-9]*-linux-gnu[a-z]*|python3)|share/(applications|doc|man|lintian))/?.* "' \
    sh "$work/before" "$work/installed"

# A cashier and an administrator.
check "scenario" within till 'cd; sh play_scenario.sh /usr/bin/kova-host "$HOME/scenarios/single_movement.scenario" headless /tmp/headless &&
    sh play_scenario.sh /usr/bin/kova-host "$HOME/scenarios/single_movement.scenario" qt /tmp/qt'
check "the demonstration's first start" within till 'timeout 5 kova-host; [ $? = 124 ] && ls -l ~/.local/share/kova-host/sample.sqlite'
check "the month of the demonstration's shop" within till 'printf "%s\n" "now 2026-11-16T10:05:00" create connect "show 0" \
    "dump grid Pulsantiera_Pagamenti" | kova-host --script - --database ~/.local/share/kova-host/sample.sqlite | grep -F "caption=\"Bancomat\""'
check "test server, its faults, and the ODBC driver" within till 'cd; sh test_server.sh /usr/bin/kova-test-server /usr/bin/kova-host "$HOME/server"'
for program in kova-host kova-test-server; do
    check "manual of $program" within till "man $program | grep -q '^OPTIONS' && gunzip -c /usr/share/man/man1/$program.1.gz >/tmp/$program.1 &&
        sh ~/manual.sh /usr/bin/$program /tmp/$program.1"
    check "warnings about the manual of $program" within till "test -z \"\$(man --warnings -l /tmp/$program.1 2>&1 >/dev/null)\""
done
check "settings to copy" within till 'grep -q "SOFTWARE/ZELT/KOVA/Screen" /usr/share/doc/libkova-drawer-man4/examples/kova.ini'

# Programmers: a dialog is modal, and stands until its time is over.
examples=/usr/share/doc/libkova-drawer-man-dev/examples
shop='~/.local/share/kova-host/sample.sqlite'
check "C++ by CMake" within till "cmake -S $examples/01_ten_lines -B ~/cmake >/dev/null && cmake --build ~/cmake >/dev/null &&
    { timeout 3 ~/cmake/ten_lines $shop; [ \$? = 124 ]; }"
check "C++ by pkg-config" within till "g++ -std=c++20 -Wall -Wextra -Werror $examples/01_ten_lines/main.cpp -o ~/ten_lines \
    \$(pkg-config --cflags --libs kova_drawer_man) && { timeout 3 ~/ten_lines $shop; [ \$? = 124 ]; }"
check "C" within till "gcc -std=c11 -Wall -Wextra -Werror $examples/04_c/till.c -o ~/till \$(pkg-config --cflags --libs kova_drawer_man) &&
    { timeout 3 ~/till $shop ~/movements; [ \$? = 124 ]; } && ! ~/till /nowhere/shop.sqlite 2>~/errors && grep 'open: ' ~/errors"
check "Python" within till "{ timeout 3 python3 /usr/share/doc/python3-kova-drawer-man/examples/05_python/till.py $shop ~/journal; [ \$? = 124 ]; } &&
    python3 -c 'import importlib.metadata as data; print(data.version(\"kova-drawer-man\"))' | grep -x 4.10"

check "no failure in the log" within till '! cat ~/.local/state/kova/logfile.log 2>/dev/null | grep .'
check "removal" quietly within root "dpkg --purge $(echo $ours)"
snapshot after
check "something is left" diff -u "$work/before" "$work/after"
check "the user's shop was kept" within till "test -s $shop"
$asroot rm -rf "$root"
[ "$wrong" = 0 ] && echo "the packages are as they should be"
exit $wrong
