#!/bin/sh
# The library exports what hosts were built against, with its version where the system has one, and nothing else: names
# are added to the list, none goes. What is built for Windows imports nothing but Windows.
#
#   exports.sh libKova_Drawer_Man.so
#   exports.sh Kova_Drawer_Man.dll OBJDUMP
set -u
wrong=0
list=${0%exports.sh}c_symbols.txt
case $1 in
*.dll)
    headers=$("$2" -p "$1") || exit 1
    # Beside the list: one that is marked in every build of Qt's own, and what Windows asks of an automation class.
    exported=$(printf '%s\n' "$headers" | sed '1,/\[Ordinal\/Name Pointer\] Table/d; /^ *$/q' | sed -nE 's/^.*\[ *[0-9]+\] (\+base\[ *[0-9]+\] +[0-9a-f]+ )?([A-Za-z_]\w*)$/\2/p' |
        grep -vxE 'qt_startup_hook|Dll(GetClassObject|CanUnloadNow|RegisterServer|UnregisterServer|Install)')
    known=$(sed 's/@@.*//' "$list")
    system='advapi32|authz|comdlg32|d3d9|d3d11|dwmapi|dxgi|gdi32|imm32|kernel32|mpr|msvcrt|netapi32|odbc32|ole32|oleaut32|shcore|shell32|shlwapi|user32|userenv|uxtheme|version|winmm|ws2_32|wtsapi32|api-ms-win-core-[a-z0-9-]*'
    foreign=$(printf '%s\n' "$headers" | sed -n 's/^.*DLL Name: //p' | tr 'A-Z\r' 'a-z ' | grep -vE "^($system)\.dll *$")
    if [ -n "$foreign" ]; then
        printf 'imported beyond the system:\n%s\n' "$foreign"
        wrong=1
    fi
    ;;
*)
    exported=$(nm -gD --defined-only "$1" | cut -d ' ' -f 3- | grep -vx 'KOVA_4@@KOVA_4\|KOVA_4') || exit 1
    known=$(cat "$list")
    ;;
esac
exported=$(printf '%s\n' "$exported" | LC_ALL=C sort)
if [ "$exported" != "$known" ]; then
    printf 'exported, where c_symbols.txt has others:\n%s\n' "$exported"
    wrong=1
fi
exit $wrong
