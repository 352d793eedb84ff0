#!/usr/bin/env bash
# For ../package: a zip for programmers, with headers, and an installer for tills. The time of the build, which the
# stripped programs name too, is SOURCE_DATE_EPOCH.
#
#   windows_packages.sh FOLDER VERSION
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. cmake/packages.sh
need_packages build qt sqlite windows
KOVA_WINDOWS_LIBRARIES=$(cmake/windows_libraries.sh x86_64 | tail -n 1) || exit 1
export KOVA_WINDOWS_LIBRARIES

packages=$1 version=$2
name=Kova_Drawer_Man-$version-windows-x86_64
folder=$packages/$name
mkdir -p "$folder"
say "building (log: build/package.log)"
{
  cmake --preset windows &&
    cmake --build --preset windows &&
    cmake --install build/windows --strip --prefix "$folder"
} >build/package.log 2>&1 || { tail -n 30 build/package.log; fail "the build failed"; }
mkdir "$folder/docs" "$folder/licenses"
cp README.md CHANGELOG.md "$folder"
cp docs/{windows,sql_server,writing_a_host,testing_a_host,reference,c,cpp}.md "$folder/docs"

# licence TITLE PACKAGE FILE: the text that the distribution has for it, and a line of the overview.
licence() {
  cp "/usr/share/doc/$2/copyright" "$folder/licenses/$3"
  printf '%-34s %-26s %s\n' "$1" "$(dpkg-query -W -f '${Version}' "$2")" "$3"
}
{
  echo "Kova_Drawer_Man.dll and kova-host.exe contain, linked statically, what the Debian source packages of these"
  echo "versions hold; the installer is made by NSIS."
  echo
  licence "Qt (qt6-base), what it bundles" qt6-base-dev Qt.txt
  licence "SQLite (sqlite3)" libsqlite3-dev SQLite.txt
  licence "mingw-w64, winpthreads" mingw-w64-common mingw-w64.txt
  licence "GCC's libraries (gcc-mingw-w64)" gcc-mingw-w64-base GCC.txt
  licence "NSIS" nsis NSIS.txt
  cat <<'END'

Qt is used under the GNU Lesser General Public License, version 3 (LGPL-3.txt, which adds to GPL-3.txt). It is linked
statically. You may change Qt and link these files again with it: the sources of Kova_Drawer_Man are all that this
needs, and their command `./package windows` builds Qt from Debian's source package and links it. Debugging and
changing the result for your own use is allowed.

Portions of this software are copyright The FreeType Project. This software is based in part on the work of the Independent
JPEG Group.
END
} >"$folder/licenses/README.txt"
cp /usr/share/common-licenses/{LGPL-3,GPL-3,GPL-2} "$folder/licenses"
for text in LGPL-3 GPL-3 GPL-2; do mv "$folder/licenses/$text" "$folder/licenses/$text.txt"; done

find "$folder" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
(cd "$packages" && find "$name" -type f | sort | zip -9 -X -q "$name.zip" -@)

# What the installer puts and what the uninstaller deletes, which is the same: all but what programmers need.
files() { (cd "$folder" && find . -mindepth 1 -not -path './include*' -not -path './lib' -not -path './lib/*' "$@" | sort -r); }
{
  echo '!macro PutFiles'
  files -type f -printf '%h %P\n' | while read -r where file; do
    where=${where#.}
    printf '  SetOutPath "$INSTDIR%s"\n  File "%s"\n' "${where//\//\\}" "$folder/$file"
  done
  printf '!macroend\n!macro DeleteFiles\n'
  files -type f -printf '%P\n' | sed 's|/|\\|g; s|.*|  Delete "$INSTDIR\\&"|'
  files -type d -printf '%P\n' | sed 's|/|\\|g; s|.*|  RMDir "$INSTDIR\\&"|'
  echo '!macroend'
} >"$packages/files.nsh"
say "packing"
makensis -V2 -INPUTCHARSET UTF8 -DTARGET=amd64-unicode -DVERSION="$version" \
  -DFILES="$packages/files.nsh" -DOUTPUT="$packages/$name-setup.exe" cmake/windows_installer.nsi
rm "$packages/files.nsh"
