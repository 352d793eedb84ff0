#!/bin/sh
# What people get on Windows, under Wine: the zip, programs from it in a folder with a blank and an umlaut, hosts compiled
# against it, and the installer for a machine and for a user.
#
#   windows.sh PACKAGES FOLDER LONG_RUN    the folder that ../../package filled, one to work in, and the program that
#                                          measures the installed component. Wine needs a screen.
set -u
here=$(dirname "$(readlink -f "$0")")
zip=$(ls "$1"/*.zip) setup=$(ls "$1"/*-setup.exe) work=$(realpath -m "$2") long_run=$3
unpacked="$work/Kassen Zürich"
target=x86_64-w64-mingw32
export KOVA_EMULATOR=wine WINEPREFIX="$work/wine" WINEDEBUG=-all WINEDLLOVERRIDES=winemenubuilder.exe=d
wrong=0

# check WHAT COMMAND...: says what is wrong when the command fails.
check() {
    what=$1
    shift
    "$@" || { echo "wrong: $what"; wrong=1; }
}
same() { diff -u "$1" "$2"; }
none() { ! grep -n "$@"; }

rm -rf "$work" && mkdir -p "$unpacked" && unzip -q "$zip" -d "$work/zip" && mv "$work"/zip/*/* "$unpacked" &&
    wineboot --init 2>/dev/null || exit 1

# Files, and what the two programs need and say of themselves.
(cd "$unpacked" && find . -type f) >"$work/files"
check "another file in the zip" none -vE '^\./(bin/(Kova_Drawer_Man\.(dll|tlb|automation\.manifest)|kova-host\.exe)|include/kova/.*\.h|(README|CHANGELOG)\.md|docs/[a-z_]*\.md|lib/(libKova_Drawer_Man\.dll\.a|Kova_Drawer_Man\.def|kova/kova-script-host\.exe)|lib/cmake/Kova_Drawer_Man/[^/]*\.cmake|lib/pkgconfig/kova_drawer_man\.pc|licenses/[A-Za-z0-9-]*\.txt)$' "$work/files"
for text in 'LGPL-3.txt:GNU LESSER GENERAL PUBLIC LICENSE' 'GPL-3.txt:GNU GENERAL PUBLIC LICENSE' 'GPL-2.txt:Version 2, June' \
    'Qt.txt:src/3rdparty/freetype' 'GCC.txt:GCC RUNTIME LIBRARY EXCEPTION' 'mingw-w64.txt:winpthreads' 'SQLite.txt:public-domain' \
    'NSIS.txt:NSIS' 'README.txt:linked'; do
    check "licence ${text%%:*}" grep -q "${text#*:}" "$unpacked/licenses/${text%%:*}"
done
for file in Kova_Drawer_Man.dll kova-host.exe; do
    $target-objdump -p "$unpacked/bin/$file" | sed -n 's/^.*DLL Name: //p' | tr A-Z a-z >"$work/imports"
    check "imports of $file" grep -q '^kernel32.dll' "$work/imports"
    check "$file needs what not every Windows has" none -vE '^(advapi32|authz|comdlg32|d3d11|d3d9|dwmapi|dxgi|gdi32|imm32|kernel32|mpr|msvcrt|netapi32|odbc32|ole32|oleaut32|shcore|shell32|shlwapi|user32|userenv|uxtheme|version|winmm|ws2_32|wtsapi32|api-ms-win-core-(synch-l1-2-0|winrt-l1-1-0|winrt-string-l1-1-0))\.dll$|^winspool\.drv$' "$work/imports"
    $target-windres "$unpacked/bin/$file" -O rc -o "$work/$file.rc"
    check "$file names the folder that it was built in" none -qaF "$(realpath "$here/../..")" "$unpacked/bin/$file"
    check "version of $file" grep -q '"ProductName", "Kova_Drawer_Man"' "$work/$file.rc"
done
check "kova-host.exe has no manifest" grep -q PerMonitorV2 "$work/kova-host.exe.rc"
check "the library's manifest would change its host" none MANIFEST "$work/Kova_Drawer_Man.dll.rc"

# play FOLDER INTERFACE: a scenario with the kova-host of that folder.
play() { sh "$here/../play_scenario.sh" "$1/bin/kova-host.exe" "$here/../scenarios/single_movement.scenario" "$2" "$work/played"; }
check "the unpacked kova-host" play "$unpacked" qt
hosts() {
    cmake -S "$here" -B "$work/hosts" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/../../cmake/toolchains/windows.cmake" \
        -DCMAKE_PREFIX_PATH="$unpacked" && cmake --build "$work/hosts" || return 1
    for host in shown shown_checked; do
        WINEPATH="$(winepath -w "$unpacked/bin")" wine "$work/hosts/$host.exe" || return 1
    done
}
check "hosts compiled against the zip" hosts

# snapshot NAME: the files of the system and its settings, without what Wine itself writes at each start and the copy
# that deletes an uninstaller, which Windows removes when it starts. Each user of Windows has an empty list of classes.
snapshot() {
    wineserver -w
    (cd "$WINEPREFIX/drive_c" && find . -not -path '*/Temp/*' -not -path '*/AppData/Local/Programs' | sort) >"$work/$1-files"
    awk '/^\[/ { sub(/ [0-9]+$/, ""); shown = /^\[Software/ && !/NetworkCards/ && !/^\[Software\\\\Classes\]/ } shown && !/^#time/' \
        "$WINEPREFIX/system.reg" "$WINEPREFIX/user.reg" >"$work/$1-settings"
}
# install STATUS ARGUMENT...: the silent installer, and the exit status that it should have.
install() {
    expected=$1
    shift
    wine "$setup" /S "$@"
    seen=$?
    [ $seen = "$expected" ] || echo "status $seen, expected $expected"
    [ $seen = "$expected" ]
}
# life MODE FOLDER: installs, again while a program runs, then into another folder, and uninstalls.
life() {
    mode=$1 folder=$WINEPREFIX/drive_c/$2 other=$WINEPREFIX/drive_c/Kassen/Zürich
    snapshot before
    check "$mode: install" install 0 "/$mode"
    check "$mode: the installed kova-host" play "$folder" headless
    hive=$([ "$mode" = AllUsers ] && echo HKLM || echo HKCU)
    check "$mode: registered for automation" wine reg query "$hive\\Software\\Classes\\Kova_Drawer_Man.cls_Kova_Drawer_Man" >"$work/registered"
    # Wine does not look for the classes of one user.
    [ "$mode" = CurrentUser ] || check "$mode: the component is slow, or keeps what it should let go of" wine "$long_run" timed
    snapshot installed
    check "$mode: no entry to uninstall" grep -q '^"QuietUninstallString"' "$work/installed-settings"
    check "$mode: no link in the start menu" grep -q 'Start Menu.*/Kova_Drawer_Man.lnk' "$work/installed-files"

    mkfifo "$work/lines" 2>/dev/null
    wine "$folder/bin/kova-host.exe" --script - <"$work/lines" >/dev/null &
    exec 3>"$work/lines"
    sleep 2
    check "$mode: install in use" install 32 "/$mode"
    check "$mode: install elsewhere in use" install 32 "/$mode" "/D=$(winepath -w "$other")"
    wine "$folder/uninstall.exe" /S "/$mode" # goes on in a copy of itself
    sleep 2
    exec 3>&-
    wait
    snapshot refused
    check "$mode: something was changed in use" same "$work/installed-files" "$work/refused-files"

    check "$mode: install elsewhere" install 0 "/$mode" "/D=$(winepath -w "$other")"
    check "$mode: the older folder is left" [ ! -e "$folder" ]
    echo "till's own" >"$other/bin/till.ini"
    wine "$other/uninstall.exe" /S "/$mode"
    wineserver -w
    check "$mode: a till's own file" rm "$other/bin/till.ini"
    (cd "$WINEPREFIX/drive_c" && rmdir -p Kassen/Zürich/bin)
    snapshot after
    check "$mode: files are left" same "$work/before-files" "$work/after-files"
    check "$mode: settings are left" same "$work/before-settings" "$work/after-settings"
}
life AllUsers "Program Files/Kova_Drawer_Man"
life CurrentUser "users/$(id -un)/AppData/Local/Programs/Kova_Drawer_Man"
[ "$wrong" = 0 ] && echo "the packages are as they should be"
exit $wrong
