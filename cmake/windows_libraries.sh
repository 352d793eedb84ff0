#!/usr/bin/env bash
# Builds what a program for Windows links, from the distribution's source packages: SQLite, and of Qt what the
# drawing needs. Once a machine: they are kept in ${XDG_CACHE_HOME:-~/.cache}/kova, by version, options and compiler.
#
#   windows_libraries.sh CPU     x86_64 or i686; prints the folder on its last line
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
. "$here/packages.sh"
cpu=${1:?usage: windows_libraries.sh x86_64|i686}
compiler=$cpu-w64-mingw32
qt_version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
sqlite_version=$(dpkg-query -W -f '${source:Version}' libsqlite3-dev)
# What builds them is part of the key; the rest of this file may change without a new build.
key=$({ sed -n '/^build_/,/^}/p' "$0"; echo "$qt_version $sqlite_version"; "$compiler-g++-posix" --version; } |
  sha256sum | cut -c1-16)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/kova
prefix=$cache/windows-$cpu-$key
if [ -e "$prefix/complete" ]; then
  echo "$prefix"
  exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$prefix/lib" "$prefix/include" "$work/lists/partial" "$work/parts"

# source NAME VERSION: unpacks the upstream source into $work/NAME. The machine's own lists stay as they are.
fetch() {
  if [ ! -e "$work/parts/done" ]; then
    for list in /etc/apt/sources.list.d/*.sources; do
      [ ! -e "$list" ] || sed 's/^Types:.*/Types: deb-src/' "$list" >"$work/parts/$(basename "$list")"
    done
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
      [ ! -e "$list" ] || sed -n 's/^deb /deb-src /p' "$list" >"$work/parts/$(basename "$list" .list).list"
    done
    touch "$work/parts/done"
  fi
  local options=(-o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/parts"
    -o Dir::State::lists="$work/lists" -o APT::Sandbox::User=root)
  [ -e "$work/updated" ] || apt-get "${options[@]}" update
  touch "$work/updated"
  mkdir -p "$work/$1"
  (cd "$work" && apt-get "${options[@]}" source --download-only "$1=$2")
  local upstream=${2%-*}
  tar xf "$work/$1_${upstream#*:}.orig.tar.xz" -C "$work/$1" --strip-components=1
}

build_sqlite() {
  fetch sqlite3 "$sqlite_version"
  (
    cd "$work/sqlite3"
    ./configure --disable-tcl
    make sqlite3.c
    "$compiler-gcc-posix" -O2 -c sqlite3.c -o sqlite3.o
    "$compiler-ar" rcs "$prefix/lib/libsqlite3.a" sqlite3.o
    cp sqlite3.h "$prefix/include/"
  )
}

# Of Qt what widgets, printing and the calendar need; moc and rcc are those of the installed Qt of the same version.
build_qt() {
  fetch qt6-base "$qt_version"
  local off=(sql network dbus xml concurrent opengl vulkan icu glib cups sessionmanager gif system_zlib
    tabletevent direct2d directwrite directwrite3) on=(pdf printer) features=() feature
  for feature in "${off[@]}"; do features+=("-DQT_FEATURE_$feature=OFF"); done
  for feature in "${on[@]}"; do features+=("-DQT_FEATURE_$feature=ON"); done
  cmake -S "$work/qt6-base" -B "$work/qt" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/toolchains/windows.cmake" \
    -DKOVA_WINDOWS_CPU="$cpu" -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DBUILD_SHARED_LIBS=OFF -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH 2>/dev/null || gcc -print-multiarch)/cmake" \
    -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DINPUT_opengl=no \
    "${features[@]}"
  cmake --build "$work/qt"
  cmake --install "$work/qt"
}

say "building SQLite and Qt for Windows ($cpu) once for this machine, into $prefix" >&2
log=$cache/windows-$cpu.log
exec 3>&2
# Without the network one line, and the end of the log where a build has failed.
stopped() {
  [ "$BASH_SUBSHELL" = 0 ] || exit 1
  local reason
  reason=$(sed -nE 's/^[EW]: (Failed to fetch)/: \1/p' "$log" | head -n 1)
  [ -n "$reason" ] || tail -n 20 "$log" >&3
  fail "could not build the libraries for Windows$reason (log: $log)" 2>&3
}
trap stopped ERR
set -E
{ build_sqlite; build_qt; } >"$log" 2>&1
trap - ERR
touch "$prefix/complete"
echo "$prefix"
