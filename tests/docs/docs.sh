#!/bin/sh
# What the pages promise: every relative link and anchor leads somewhere, and every program compiles.
#
#   docs.sh SOURCES FOLDER COMPILER     the project, a folder to work in, and a compiler of C++ that knows C as well
#
# A program is a block fenced as c, cpp or python. Where "body" follows, as in ```c body, it is what stands inside a
# function that has the variables of `prologue` below.
set -u
export LC_ALL=C
root=$1 work=$(realpath -m "$2") compiler=$3
headers=$(realpath "$root/src/public")
wrong=0
say() {
    echo "$1"
    wrong=1
}

rm -rf "$work" && mkdir -p "$work" && cd "$root" || exit 1
pages=$(ls README.md CHANGELOG.md CONTRIBUTING.md docs/*.md examples/*/README.md 2>/dev/null)

# The headings of a page as its anchors.
anchors() {
    awk '/^```/ { fenced = !fenced } fenced || !/^#+ / { next }
        {
            sub(/^#+ +/, ""); sub(/ +$/, "")
            slug = tolower($0)
            gsub(/[][!"#$%&\047()*+,.\/:;<=>?@\\^`{|}~]/, "", slug)
            gsub(/ /, "-", slug)
            print seen[slug]++ ? slug "-" seen[slug] - 1 : slug
        }' "$1"
}

# LINE TARGET for each link of a page.
links() {
    awk '/^```/ { fenced = !fenced } fenced { next }
        {
            gsub(/`[^`]*`/, "")
            while (match($0, /\]\([^() ]+\)/)) {
                print NR, substr($0, RSTART + 2, RLENGTH - 3)
                $0 = substr($0, RSTART + RLENGTH)
            }
        }' "$1"
}

for page in $pages; do
    links "$page" >"$work/links"
    while read -r line target; do
        case $target in http://* | https://* | mailto:*) continue ;; esac
        file=${target%%#*}
        place=$page
        [ -z "$file" ] || place=$(dirname "$page")/$file
        if [ ! -e "$place" ]; then
            say "$page:$line: leads nowhere: $target"
        elif [ "$file" != "$target" ] && ! anchors "$place" | grep -qxF -e "${target#*#}"; then
            say "$page:$line: no such heading: $target"
        fi
    done <"$work/links"
done

prologue() {
    case $1 in
    c) echo '#include <kova_drawer_man_c.h>
#include <stdio.h>
extern kova_component drawer; extern kova_sink sink; extern kova_database database;' ;;
    cpp) echo '#include <kova_drawer_man.h>
#include <iostream>
extern const std::shared_ptr<kova::cls_Kova_Drawer_Man> drawer; extern void* dbc;' ;;
    esac
}
prologue c >"$work/c" && prologue cpp >"$work/cpp"

# Each program becomes a file NUMBER.LANGUAGE that names the page and its line in what a compiler says.
for page in $pages; do
    awk -v page="$page" -v work="$work" '
        function close_block(  i) {
            file = work "/" ++count[page] "-" place "." language
            if (language != "python" && body) {
                while ((getline line < (work "/" language)) > 0) print line > file
                close(work "/" language)
                for (i = 1; i <= lines; ++i) if (text[i] ~ /^#include/) { print text[i] > file; text[i] = "" }
                print language == "c" ? "void body(void);\nvoid body(void) {" : "void body();\nvoid body() {" > file
            }
            if (language != "python") printf "#line %d \"%s\"\n", first, page > file
            for (i = 1; i <= lines; ++i) print text[i] > file
            if (language != "python" && body) print "}" > file
            close(file)
        }
        BEGIN { place = page; gsub(/[\/.]/, "_", place) }
        !fenced && /^```(c|cpp|python)( body)?$/ {
            fenced = 1; language = substr($1, 4); body = NF > 1; first = NR + 1; lines = 0; next
        }
        !fenced && /^```/ { fenced = 1; language = ""; next }
        fenced && /^```$/ { fenced = 0; if (language) close_block(); next }
        fenced { text[++lines] = $0 }
        END { if (fenced) { print page ": a fence is not closed"; exit 1 } }' "$page" || wrong=1
done

compiled=0
for program in "$work"/*.c "$work"/*.cpp "$work"/*.python; do
    [ -e "$program" ] || continue
    case $program in
    *.c) set -- "$compiler" -x c -std=c99 ;;
    *.cpp) set -- "$compiler" -x c++ -std=c++17 ;;
    *) set -- python3 -m py_compile ;;
    esac
    [ "$1" = python3 ] || set -- "$@" -Wall -Werror -fsyntax-only "-I$headers"
    "$@" "$program" || say "does not compile: $(basename "$program")"
    compiled=$((compiled + 1))
done
[ "$compiled" -gt 0 ] || say "no programs were found"
exit "$wrong"
