#!/bin/sh
# The library exports the classes and functions of its public header, all of them, and nothing else. What is built
# for Windows imports nothing but Windows.
#
#   exports.sh libKova_Drawer_Man.so
#   exports.sh Kova_Drawer_Man.dll OBJDUMP
set -u
wrong=0
case $1 in
*.dll)
    headers=$("$2" -p "$1") || exit 1
    exported=$(printf '%s\n' "$headers" | sed '1,/\[Ordinal\/Name Pointer\] Table/d; /^ *$/q' | sed -nE 's/^.*\[ *[0-9]+\] (\+base\[ *[0-9]+\] +[0-9a-f]+ )?([A-Za-z_]\w*)$/\2/p' | c++filt |
        grep -vxE 'qt_startup_hook|Dll(GetClassObject|CanUnloadNow|RegisterServer|UnregisterServer|Install)')
    # The first is marked in every build of Qt's own; the others are what Windows asks of an automation class.
    system='advapi32|authz|comdlg32|d3d9|d3d11|dwmapi|dxgi|gdi32|imm32|kernel32|msvcrt|netapi32|odbc32|ole32|oleaut32|shcore|shell32|shlwapi|user32|userenv|uxtheme|version|winmm|ws2_32|wtsapi32|api-ms-win-core-[a-z0-9-]*'
    foreign=$(printf '%s\n' "$headers" | sed -n 's/^.*DLL Name: //p' | tr 'A-Z\r' 'a-z ' | grep -vE "^($system)\.dll *$")
    if [ -n "$foreign" ]; then
        printf 'imported beyond the system:\n%s\n' "$foreign"
        wrong=1
    fi
    ;;
*) exported=$(nm -gD --defined-only "$1" | cut -d ' ' -f 3- | c++filt) || exit 1 ;;
esac

# Hosts of the C interface were built against these and their version, which Windows has no place for: names are
# added, none goes.
in_c=$(printf '%s\n' "$exported" | grep '^kova_' | LC_ALL=C sort)
known=$(case $1 in *.dll) sed 's/@@.*//' "${0%exports.sh}c_symbols.txt" ;; *) cat "${0%exports.sh}c_symbols.txt" ;; esac)
if [ "$in_c" != "$known" ]; then
    printf 'exported for C, where c_symbols.txt has others:\n%s\n' "$in_c"
    wrong=1
fi
exported=$(printf '%s\n' "$exported" | grep -v '^kova_')

classes='cls_Kova_Drawer_Man|EventSink|Error|DatabaseError'
functions='createComponent|openDatabase|hostOdbcConnection|setLanguage|languageId|setLogFolder|regionalSettings|parseDate|formatDate|formatAmount|fontFamily|setScreenAids|setDecimalKey|setParentWindow|processEvents|eventDescriptor|shutDown|type_description::(library|members|events|enumeration|find)'
surplus=$(printf '%s\n' "$exported" | grep -vE "^KOVA_4\b" |
    grep -vE "^((vtable|typeinfo|typeinfo name) for )?kova::(($classes)(::.*|@.*)?|($functions)(\[.*)?\(.*)$")
if [ -n "$surplus" ]; then
    printf 'exported beyond the public header:\n%s\n' "$surplus"
    wrong=1
fi

for name in 'createComponent()' 'openDatabase(' 'hostOdbcConnection(' 'setLanguage(int' 'languageId()' 'setLogFolder(' 'regionalSettings()' 'parseDate(' 'formatDate' 'formatAmount' 'fontFamily' 'setScreenAids(' 'setDecimalKey(' 'processEvents()' 'shutDown()' 'type_description::find(' \
    'cls_Kova_Drawer_Man::connect(' 'cls_Kova_Drawer_Man::Show' 'cls_Kova_Drawer_Man::DiscardForm()' \
    'cls_Kova_Drawer_Man::Inizializza(' 'cls_Kova_Drawer_Man::InizializzaByConnString(' \
    'cls_Kova_Drawer_Man::SetSoftwareName(' 'cls_Kova_Drawer_Man::ApriCassetto()' \
    'cls_Kova_Drawer_Man::Stampa(' 'cls_Kova_Drawer_Man::Anteprima(' 'cls_Kova_Drawer_Man::SalvaPagamento(' \
    'cls_Kova_Drawer_Man::get' 'cls_Kova_Drawer_Man::set(' 'cls_Kova_Drawer_Man::invoke('; do
    case $exported in
    *"kova::$name"*) ;;
    *)
        echo "not exported: kova::$name"
        wrong=1
        ;;
    esac
done
exit $wrong
