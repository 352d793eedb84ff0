# For the scripts: what they say, and the Debian 12 packages that they need. To be sourced.

say() { printf '== %s\n' "$*"; }
fail() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

packages_build="g++ cmake ninja-build pkg-config"
packages_qt="qt6-base-dev libglib2.0-dev libgl-dev fonts-dejavu-core"
packages_sqlite="libsqlite3-dev"
packages_odbc="unixodbc unixodbc-dev odbcinst tdsodbc" # the driver manager, and FreeTDS as a driver
packages_python="python3-pip python3-dbg mypy"
packages_pascal="fp-compiler fp-units-fcl fp-units-db"
packages_java="default-jdk-headless libjna-java libxerial-sqlite-jdbc-java"
packages_csharp="mono-mcs mono-runtime libmono-sqlite4.0-cil"
packages_tests="libgtest-dev clang-format"
packages_pictures="imagemagick" # joins the film of examples/record.sh, and takes pictures in tests
packages_all="clang clang-tidy libbenchmark-dev"
packages_display="python3 python3-pyatspi at-spi2-core gir1.2-atspi-2.0 dbus-daemon xvfb xauth openbox xdotool"
packages_windows="g++-mingw-w64-x86-64-posix wine wine64 libwine-dev mingw-w64-tools xvfb xauth openbox tcl dpkg-dev googletest zip unzip nsis"
packages_source="xz-utils"
packages_deb="debhelper dh-python pybuild-plugin-pyproject python3-all python3-setuptools dpkg-dev xz-utils"
packages_deb_tests="lintian man-db desktop-file-utils mmdebstrap" # and what they install into a bare Debian of their own
packages_windows_32="g++-mingw-w64-i686-posix"

installed() { dpkg-query -W -f '${db:Status-Abbrev}' "$1" 2>/dev/null | grep -q '^ii'; }

# need_packages GROUP...: installs what is missing of these groups; nothing is asked of the network otherwise.
need_packages() {
  command -v dpkg-query >/dev/null || fail "this is no Debian system: install by hand what cmake/packages.sh lists"
  local group list package missing=()
  for group in "$@"; do
    list=packages_$group
    for package in ${!list}; do
      installed "$package" || missing+=("$package")
    done
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "installing: ${missing[*]}"
  local asroot=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || fail "cannot install ${missing[*]}: neither root nor sudo"
    asroot=(sudo)
  fi
  local log
  log=$(mktemp)
  # A source of packages that does not answer matters only if what is missing comes from it.
  "${asroot[@]}" apt-get update >"$log" 2>&1 || true
  if ! "${asroot[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y --no-install-recommends "${missing[@]}" >>"$log" 2>&1; then
    fail "could not install ${missing[*]}: $(sed -n 's/^E: //p' "$log" | head -n 1) (log: $log)"
  fi
  rm -f "$log"
}
