#!/bin/sh
# Finds includes that point outward. What a folder may include besides itself:
#
#   arrows.sh SRC HOST
allowed='
base
ports                base
widgets              base ports
services             base ports widgets
screen               base ports widgets services
coin_count           base ports widgets services
report               base ports widgets services
drawer_dialog        base ports widgets services report coin_count
com                  base
component            base ports widgets services drawer_dialog
adapters/headless    base ports widgets
adapters/system      base ports
adapters/sqlite      base ports
adapters/odbc        base ports
adapters/ado         base ports com
adapters/databases   base ports adapters/sqlite adapters/odbc adapters/ado
adapters/qt          base ports widgets services screen
library              base ports widgets services component adapters/system adapters/databases adapters/qt
c_interface          base ports component drawer_dialog library

automation           base com component library adapters/ado
automation/type_library automation component

scenario             base component
shop                 ports services adapters/sqlite
documents            base ports services
documents/qt         base services documents demonstration adapters/qt
demonstration        library shop documents documents/qt
player               com automation base ports widgets services component drawer_dialog coin_count scenario shop adapters/databases adapters/headless adapters/system
player/qt            base widgets player adapters/qt adapters/system
'
[ -d "$1" ] && [ -d "$2" ] || exit 1
for folder in "$1" "$2"; do
    (cd "$folder" && grep -rHo '#include "[a-z_]*/[^"]*"' --include='*.h' --include='*.cpp' .)
done | sed 's|^\./||' | awk -v allowed="$allowed" '
    function folder(path) { sub(/\/[^\/]*$/, "", path); return path }
    BEGIN {
        count = split(allowed, lines, "\n")
        for (i = 1; i <= count; ++i) {
            words = split(lines[i], names, " ")
            known[names[1]] = 1
            for (j = 2; j <= words; ++j)
                may[names[1], names[j]] = 1
        }
    }
    /^[^:\/]*:/ { next } # what puts the host together
    {
        split($0, parts, ":#include \"")
        from = folder(parts[1]); to = folder(substr(parts[2], 1, length(parts[2]) - 1))
        ++seen
        if (!(from in known)) { print parts[1] ": a folder without a line here: " from; wrong = 1 }
        else if (from != to && !((from, to) in may)) { print parts[1] ": may not include " to; wrong = 1 }
    }
    END { exit wrong || !seen }'
