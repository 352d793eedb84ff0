#!/bin/sh
# The library exports the classes and functions of its public header, all of them, and nothing else.
#
#   exports.sh libKova_Drawer_Man.so
set -u
exported=$(nm -gDC --defined-only "$1" | cut -d ' ' -f 3-) || exit 1
wrong=0

classes='cls_Kova_Drawer_Man|EventSink|Error|DatabaseError'
functions='createComponent|openDatabase|hostOdbcConnection|setLanguage|languageId|setLogFolder|regionalSettings|parseDate|formatDate|formatAmount|fontFamily|setScreenAids|setDecimalKey|processEvents|shutDown|type_description::(library|members|events|enumeration|find)'
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
