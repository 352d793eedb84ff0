#!/bin/sh
# A manual page says of a program's options and commands what the program itself says.
#
#   manual.sh PROGRAM PAGE      both by their whole paths
set -u
work=$(mktemp -d) && cd "$work" || exit 1
trap 'rm -rf "$work"' EXIT
"$1" --help >help || exit 1
sed 's/\\\([- ]\)/\1/g; s/\\f[A-Z]//g; s/\\c$//' "$2" >page
# section NAME: its lines. heads: the first words of a section's entries, one a line.
section() { sed -n "/^\.SH $1\$/,/^\.SH/p" page | sed '/^\.SH/d'; }
heads() { section "$1" | sed -n '/^\.TP/{n;p}' | sed 's/^\.[A-Z]* *//; s/"//g; s/,/\n/g' | sed 's/^ *//; s/ .*//'; }
wrong=0
same() {
    sort -u "$2" >"$2.sorted"
    sort -u "$3" >"$3.sorted"
    diff -u --label "$1 of --help" "$2.sorted" --label "$1 of the page" "$3.sorted" || wrong=1
}

sed -n '1,/^$/p' help | sed 's/^usage: //' | tr -d ' \n' >help-usage
section SYNOPSIS | sed '/^\.br/,$d; s/^\.[A-Z]* *//; s/"//g' | tr -d ' \n' >page-usage
[ -s page-usage ] && cmp help-usage page-usage || { diff help-usage page-usage; wrong=1; }
{ printf '%s\n' -h --help && sed '1,/^$/d' help | grep -oE '^  (--[a-z-]+, )?--[a-z-]+' | tr -d ' ' | tr , '\n'; } >help-options
heads OPTIONS >page-options
same options help-options page-options
sed -nE 's/^  ([a-z][a-z-]*)( .*)?$/\1/p' help >help-commands
heads COMMANDS >page-commands
same commands help-commands page-commands
exit $wrong
