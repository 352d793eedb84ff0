#!/usr/bin/env bash
# Plays examples/recording.scenario on real windows and joins their pictures into docs/screenshots/day.webp. With the
# path of a kova-host that is built already as its argument, it builds nothing.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. cmake/packages.sh
need_packages pictures
host=${1:-}
if [ -z "$host" ]; then
  need_packages build qt sqlite odbc
  cmake --preset release >/dev/null
  cmake --build --preset release --target kova-host
  host=build/release/kova-host
fi

pictures=$(mktemp -d)
trap 'rm -rf "$pictures"' EXIT
QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 "$host" --script examples/recording.scenario --ui qt --database sample \
  --pictures "$pictures" >/dev/null
joined=()
total=0
for picture in "$pictures"/*.png; do
  time=${picture%.png}
  time=${time##*-}
  joined+=(-delay "$((10#$time))" "$picture")
  total=$((total + 10#$time))
done
convert -loop 0 "${joined[@]}" -define webp:lossless=true docs/screenshots/day.webp
say "docs/screenshots/day.webp: $((total / 100)) s, $(stat -c %s docs/screenshots/day.webp) bytes"
