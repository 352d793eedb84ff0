#!/usr/bin/env bash
# Draws every layout of the screen in many sizes, in the languages and both colour schemes, into build/screens, with a
# page to look through them: docs/screens.sh [HOST], where HOST is kova-host, built as ./run does without it.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. cmake/packages.sh
host=${1:-}
if [ -z "$host" ]; then
  need_packages build qt sqlite odbc
  say "building (log: build/screens.log)"
  mkdir -p build
  { cmake --preset release && cmake --build --preset release --target kova-host; } >build/screens.log 2>&1 ||
    { tail -n 30 build/screens.log; fail "the build failed"; }
  host=build/release/kova-host
fi
host=$(readlink -f "$host")
scenario=$PWD/docs/screens.scenario
output=$PWD/build/screens
rm -rf "$output"
mkdir -p "$output"

# WIDTHxHEIGHT LANGUAGE SCHEME [RATIO]: pixels of the screen, and how many of them make one of the toolkit's.
draw() {
  local size=$1 language=$2 scheme=$3 ratio=${4:-1} folder runtime dark=False
  folder=$output/$size-$language-$scheme-$ratio
  mkdir "$folder"
  cd "$folder"
  case $language in it) runtime=1040 ;; de) runtime=1031 ;; *) runtime=1033 ;; esac
  [ "$scheme" = light ] || dark=True
  local region=${language}-${language^^}
  [ "$language" != en ] || region=en-US
  {
    printf '%s\n' "regional $region" "now 2026-11-16T10:05:00" "runtime-language $runtime" create connect \
      "set idCassa 1" "set idUtente 1" "set ActiveColorMetroStyle $dark"
    cat "$scenario"
  } | QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$ratio "$host" --script - --ui qt --database sample --size \
    "$(awk -Fx -v r="$ratio" '{ printf "%dx%d", $1 / r, $2 / r }' <<<"$size")" >trace.txt 2>errors.txt ||
    { cat errors.txt >&2; return 1; }
}
export -f draw
export host scenario output

{
  for size in 1024x768 1280x800 1366x768 1920x1080 800x1280 1080x1920; do
    for language in it de en; do
      for scheme in light dark; do echo "$size $language $scheme"; done
    done
  done
  echo "3840x2160 it light"
  echo "3840x2160 de dark"
  for ratio in 1.5 2; do
    echo "1920x1080 it light $ratio"
    echo "3840x2160 de light $ratio"
  done
} >"$output/wanted"
say "drawing $(wc -l <"$output/wanted") sets of pictures"
xargs -P "$(nproc)" -L 1 bash -c 'draw "$@"' draw <"$output/wanted"

# A table of all pictures: a row for each set, a column for each layout.
{
  echo '<!doctype html><meta charset="utf-8"><title>Screens</title>'
  echo '<style>body{font:14px sans-serif}img{height:200px}th{position:sticky;top:0;background:#fff}</style><table>'
  first=$(find "$output" -mindepth 1 -maxdepth 1 -type d | sort | head -1)
  pictures=$(cd "$first" && ls ./*.png)
  echo "<tr><th></th>$(for p in $pictures; do echo "<th>$(basename "$p" .png)</th>"; done)</tr>"
  for folder in "$output"/*/; do
    set=$(basename "$folder")
    echo "<tr><td>${set//-/<br>}</td>"
    for p in $pictures; do echo "<td><a href=\"$set/$p\"><img loading=\"lazy\" src=\"$set/$p\"></a></td>"; done
    echo '</tr>'
  done
  echo '</table>'
} >"$output/index.html"
say "$(find "$output" -name '*.png' | wc -l) pictures; look through them in build/screens/index.html"
