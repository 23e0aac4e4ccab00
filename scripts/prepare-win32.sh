#!/usr/bin/env bash
#
# Prepares the cross build for 32-bit Windows on Debian 12.
#
#   scripts/prepare-win32.sh [--wine] [--allow-downgrades] [--jobs N]
#
# Installs what is missing of the cross compiler and its helpers, cross-builds
# expat and GoogleTest from Debian's own sources as static libraries, and puts
# them with the headers of CLI11, nlohmann-json and toml++ and the licence texts of
# all that goes into the binaries into one folder, which is kept in the user's
# cache and reused. The last line of the standard output is that folder, to be
# given to CMake as CMAKE_PREFIX_PATH together with cmake/win32-toolchain.cmake;
# the link "current" beside it leads to it, too. All messages go to the standard
# error.
#
#   --wine              also install wine32 (adds the i386 architecture), make a
#                       Wine prefix, and put bin/run-windows-program into the
#                       folder, which starts a Windows program with Japanese
#                       settings (code page 932) and without a display, and
#                       bin/wine-server, which starts or ends what serves them
#   --allow-downgrades  with --wine: where a library is installed in a newer
#                       version than its i386 package has, go back to the base
#                       release's version
#   --jobs N            compile N files at once (default: one per core)
#
# Exit status: 0 all is ready; 1 something failed; 2 wrong arguments;
# 3 all is ready but wine32, which could not be installed.

set -euo pipefail

readonly expat_version=2.5.0
readonly recipe=4 # to be raised with any change in how the folder is made
readonly compiler_package=g++-mingw-w64-i686-posix
readonly packages=("$compiler_package" cmake ninja-build dpkg-dev googletest
                   libcli11-dev nlohmann-json3-dev libtomlplusplus-dev)

source_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly source_root
readonly toolchain=$source_root/cmake/win32-toolchain.cmake

want_wine=0
allow_downgrades=0
jobs=$(nproc)
scratch=
index_fresh=0

say() { printf 'prepare-win32: %s\n' "$*" >&2; }

fail() {
  say "error: $*"
  exit 1
}

usage() {
  sed -n '2,/^$/{/^#/!d;s/^# \{0,1\}//;p}' "${BASH_SOURCE[0]}" >&2
}

while [ $# -gt 0 ]; do
  case $1 in
    --wine) want_wine=1 ;;
    --allow-downgrades) allow_downgrades=1 ;;
    --jobs)
      [ $# -ge 2 ] || { usage; exit 2; }
      jobs=$2
      shift
      ;;
    -h | --help) usage 2>&1; exit 0 ;;
    *) say "error: unknown argument '$1'"; usage; exit 2 ;;
  esac
  shift
done
[[ $jobs =~ ^[1-9][0-9]*$ ]] || { say "error: --jobs needs a number above 0"; exit 2; }

cleanup() {
  if [ -n "$scratch" ]; then rm -rf -- "$scratch"; fi
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

for tool in apt-get dpkg-query; do
  command -v "$tool" >/dev/null || fail "this script needs Debian's apt-get and dpkg"
done
[ -f "$toolchain" ] || fail "cmake/win32-toolchain.cmake is missing"

if [ -z "${XDG_CACHE_HOME:-}" ] && [ -z "${HOME:-}" ]; then
  fail "neither XDG_CACHE_HOME nor HOME is set"
fi
cache=${XDG_CACHE_HOME:-$HOME/.cache}/tvmlfilter/win32
mkdir -p "$cache" || fail "the cache folder $cache cannot be made"
cache=$(cd "$cache" && pwd)

# Leftovers of runs that were cut off.
find "$cache" -mindepth 1 -maxdepth 1 -name 'tmp.*' -mmin +300 -exec rm -rf {} + || true

new_scratch() {
  [ -n "$scratch" ] || scratch=$(mktemp -d "$cache/tmp.XXXXXXXX")
}

# run LOGNAME COMMAND...: runs quietly, shows the log's end when it fails.
run() {
  local log
  new_scratch
  log=$scratch/$1.log
  shift
  if ! "$@" >"$log" 2>&1 </dev/null; then
    tail -n 40 "$log" >&2
    return 1
  fi
}

# --- Debian packages ---------------------------------------------------------

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo -n "$@"
  else
    say "root is needed for: $*"
    return 1
  fi
}

apt_get() {
  as_root env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 \
    apt-get -q -y -o DPkg::Lock::Timeout=600 -o Dpkg::Use-Pty=0 "$@"
}

# Brings the package index up to date. One that cannot be fetched in full is no
# failure yet: whether what is there suffices shows at the installation.
apt_update() {
  local try log
  [ "$index_fresh" -eq 0 ] || return 0
  index_fresh=1
  new_scratch
  log=$scratch/apt-update.log
  for try in 1 2 3 4 5 6; do
    if apt_get update >"$log" 2>&1 </dev/null; then return 0; fi
    grep -q 'Could not get lock' "$log" || break
    say "another program holds the package index, waiting (try $try)"
    sleep 10
  done
  say "warning: the package index could not be brought up to date in full:"
  grep -E '^(E|W|Err):?' "$log" | tail -n 8 >&2 || tail -n 8 "$log" >&2
}

installed() {
  [ "$(dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | head -n 1)" = installed ]
}

install_missing() {
  local package missing=()
  for package in "${packages[@]}"; do
    installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "installing ${missing[*]}"
  apt_update
  run apt-install apt_get install --no-install-recommends "${missing[@]}" ||
    fail "apt-get could not install: ${missing[*]}"
}

# The name of the release without its updates.
base_release() { (. /etc/os-release && echo "${VERSION_CODENAME:-stable}"); }

# Fetches and unpacks Debian's source package into $1. Source packages are
# enabled in a private copy of the machine's own apt configuration, so that the
# machine's stays as it is.
fetch_source() {
  local into=$1 name=$2 apt=$scratch/apt file options
  mkdir -p "$apt/parts" "$apt/lists/partial" "$into"
  : >"$apt/sources.list"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$file" ] || continue
    sed -n -E 's/^[[:space:]]*deb(-src)?[[:space:]]+/deb-src /p' "$file"
  done | sort -u >"$apt/sources.list"
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -f "$file" ] || continue
    sed -E 's/^types:.*/Types: deb-src/I' "$file" >"$apt/parts/${file##*/}"
  done
  options=(-q -o "Dir::Etc::sourcelist=$apt/sources.list"
           -o "Dir::Etc::sourceparts=$apt/parts"
           -o "Dir::State::lists=$apt/lists"
           -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
           -o APT::Sandbox::User="$(id -un)")
  run apt-source-update env LC_ALL=C.UTF-8 apt-get "${options[@]}" update ||
    say "warning: the index of source packages could not be fetched in full"
  # The newest update may be gone again, while the base release stays.
  (cd "$into" && run apt-source env LC_ALL=C.UTF-8 \
    apt-get "${options[@]}" source --only-source "$name") ||
    (cd "$into" && run apt-source-base env LC_ALL=C.UTF-8 \
      apt-get "${options[@]}" source -t "$(base_release)" --only-source "$name") ||
    fail "Debian's source package $name could not be fetched"
}

# --- the folder of cross-built libraries --------------------------------------

folder_key() {
  {
    echo "recipe $recipe, expat $expat_version"
    dpkg-query -W -f='${Package} ${Version}\n' "$compiler_package" \
      googletest libcli11-dev nlohmann-json3-dev libtomlplusplus-dev
    cat "$toolchain"
  } | sha256sum | cut -c 1-16
}

cross_configure() {
  local name=$1 from=$2
  shift 2
  run "$name-configure" cmake -S "$from" -B "$scratch/$name" -G Ninja -Wno-dev \
    -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
    -DCMAKE_PREFIX_PATH= -DBUILD_SHARED_LIBS=OFF "$@" ||
    fail "$name could not be configured for the cross build"
}

# The texts that must come with the binaries, because what they speak of is
# linked into them: $1 is the folder to make, $2 expat's source.
collect_licences() {
  local into=$1 from=$2 package name
  mkdir -p "$into"
  cp "$from/COPYING" "$into/expat.txt" ||
    fail "the licence of expat is not in its source package"
  for package in libcli11-dev:CLI11 nlohmann-json3-dev:nlohmann-json \
    libtomlplusplus-dev:tomlplusplus \
    gcc-mingw-w64-i686-posix-runtime:gcc-runtime mingw-w64-common:mingw-w64; do
    name=${package#*:}
    package=${package%:*}
    cp "/usr/share/doc/$package/copyright" "$into/$name.txt" ||
      fail "the licence of $name is not at /usr/share/doc/$package/copyright"
  done
}

build_prefix() {
  local stage from sources=() part
  new_scratch
  stage=$scratch/stage

  say "fetching the source package of expat"
  fetch_source "$scratch/src" expat
  for part in "$scratch/src/expat-$expat_version"*/; do
    if [ -d "$part" ]; then sources+=("$part"); fi
  done
  [ ${#sources[@]} -eq 1 ] ||
    fail "the source package of expat is not of version $expat_version: $(ls "$scratch/src")"
  from=${sources[0]}expat
  [ -f "$from/CMakeLists.txt" ] || from=${sources[0]%/}

  say "building expat"
  cross_configure expat "$from" -DEXPAT_CHAR_TYPE=ushort -DEXPAT_BUILD_TOOLS=OFF \
    -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_BUILD_TESTS=OFF -DEXPAT_BUILD_DOCS=OFF \
    -DEXPAT_SHARED_LIBS=OFF
  # CMake defines it without a value, which Debian's corrections compare with 1.
  sed -i 's/^#define XML_DTD$/#define XML_DTD 1/' "$scratch/expat/expat_config.h" ||
    fail "expat's configuration could not be corrected"
  run expat-build cmake --build "$scratch/expat" --parallel "$jobs" ||
    fail "expat could not be built"
  run expat-install env DESTDIR="$stage" cmake --install "$scratch/expat" ||
    fail "expat could not be installed into the cache"
  [ -f "$stage$prefix/lib/libexpatw.a" ] ||
    fail "expat was not built with 16-bit characters"

  say "building GoogleTest"
  cross_configure googletest /usr/src/googletest
  run googletest-build cmake --build "$scratch/googletest" --parallel "$jobs" ||
    fail "GoogleTest could not be built"
  run googletest-install env DESTDIR="$stage" cmake --install "$scratch/googletest" ||
    fail "GoogleTest could not be installed into the cache"

  # Header-only libraries: just these, and not the rest of the machine's headers.
  cp -R /usr/include/CLI /usr/include/nlohmann /usr/include/toml++ "$stage$prefix/include/" ||
    fail "the headers of CLI11, nlohmann-json and toml++ could not be copied"
  mkdir -p "$stage$prefix/share/cmake"
  for part in CLI11 nlohmann_json; do
    if [ -d "/usr/share/cmake/$part" ]; then
      cp -R "/usr/share/cmake/$part" "$stage$prefix/share/cmake/"
    fi
  done

  collect_licences "$stage$prefix/share/licenses" "$from"

  chmod 755 "$stage$prefix"
  # The rename makes it complete. Another run may have been quicker.
  if ! mv -T "$stage$prefix" "$prefix" 2>/dev/null && [ ! -d "$prefix" ]; then
    fail "the folder could not be put into place: $prefix"
  fi
}

# --- Wine -----------------------------------------------------------------------

wine_installed() {
  installed wine32:i386 && installed wine
}

# install_wine_with NAME OPTION...: tries first, so that nothing is half done.
install_wine_with() {
  local name=$1
  shift
  if ! apt_get install -s --no-remove --no-install-recommends "$@" wine32:i386 wine \
    >"$scratch/$name.log" 2>&1 </dev/null; then
    return 1
  fi
  run "$name" apt_get install --no-remove --no-install-recommends "$@" wine32:i386 wine
}

no_wine() {
  say "error: wine32 could not be installed: $*"
  printf '%s\n' "$prefix"
  exit 3
}

install_wine() {
  local codename added=0
  new_scratch
  say "installing wine32"
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    as_root dpkg --add-architecture i386 || no_wine "the i386 architecture could not be added"
    added=1
    index_fresh=0
  fi
  apt_update
  codename=$(base_release)

  if install_wine_with wine-plain; then return 0; fi
  # Updates reach the i386 index later than the machine's own now and then, and
  # both must have each library in the same version. The base release is in step.
  say "not with the newest updates; trying with the base release's versions"
  if install_wine_with wine-base -t "$codename"; then return 0; fi
  if [ "$allow_downgrades" -eq 1 ]; then
    say "not with those either; going back to the base release's versions"
    cat /etc/apt/preferences 2>/dev/null >"$scratch/preferences" || true
    printf '\nPackage: *\nPin: release n=%s\nPin-Priority: 1001\n' "$codename" >>"$scratch/preferences"
    chmod a+rx "$scratch"
    if install_wine_with wine-downgrade --allow-downgrades \
      -o "Dir::Etc::preferences=$scratch/preferences"; then
      return 0
    fi
  fi

  grep -E '^(E:|.*(Depends|Breaks|Conflicts):)|unmet|Unable|not found' \
    "$scratch/wine-base.log" | tail -n 20 >&2 || tail -n 20 "$scratch/wine-base.log" >&2
  if [ "$added" -eq 1 ] &&
    ! dpkg-query -W -f='${Architecture}\n' | grep -qx i386; then
    as_root dpkg --remove-architecture i386 || true
  fi
  if [ "$allow_downgrades" -eq 0 ]; then
    say "where a library is installed newer than its i386 package, --allow-downgrades may help"
  fi
  no_wine "apt-get found no set of packages that fits (above: why)"
}

prepare_wine() {
  local version wine_prefix
  if ! wine_installed; then install_wine; fi

  # Wine takes its code pages from the locale alone. A locale that is named but
  # not there gives the code pages too, but then no file with a name beyond
  # ASCII can be opened.
  if ! locale -a 2>/dev/null | grep -qixE 'ja_JP\.utf-?8'; then
    say "making the locale ja_JP.UTF-8"
    if ! installed locales; then
      apt_update
      run apt-locales apt_get install --no-install-recommends locales ||
        fail "apt-get could not install: locales"
    fi
    run localedef as_root localedef --no-archive -i ja_JP -f UTF-8 ja_JP.UTF-8 ||
      fail "the locale ja_JP.UTF-8 could not be made"
  fi

  version=$(dpkg-query -W -f='${Version}' wine32:i386)
  wine_prefix=$cache/wine-$(printf '%s %s' "$recipe" "$version" | sha256sum | cut -c 1-16)
  if [ ! -d "$wine_prefix" ]; then
    new_scratch
    say "making a Wine prefix"
    run wineboot env -u DISPLAY -u WAYLAND_DISPLAY LC_ALL=ja_JP.UTF-8 WINEDEBUG=-all \
      WINEPREFIX="$scratch/wine" WINEDLLOVERRIDES=mscoree,mshtml= \
      timeout 600 wine wineboot -i || no_wine "it is installed but does not start"
    WINEPREFIX="$scratch/wine" timeout 120 wineserver -w ||
      no_wine "it is installed but its server does not end"
    if ! mv -T "$scratch/wine" "$wine_prefix" 2>/dev/null && [ ! -d "$wine_prefix" ]; then
      fail "the Wine prefix could not be put into place: $wine_prefix"
    fi
  fi

  install_runner run-windows-program wine "$wine_prefix"
  install_runner wine-server wineserver "$wine_prefix"
}

# Makes bin/$1, which starts Wine's program $2 with the Wine prefix $3.
install_runner() {
  local runner=$prefix/bin/$1
  if [ -x "$runner" ] && grep -qF "$3" "$runner"; then return 0; fi
  new_scratch
  mkdir -p "$prefix/bin"
  cat >"$scratch/runner" <<EOF
#!/bin/sh
# Starts Wine's program "$2" without a display and with Japanese settings (code
# page 932). WINEPREFIX, WINEDEBUG and TVML_WINE_LOCALE may be set to others.
unset DISPLAY WAYLAND_DISPLAY
LC_ALL=\${TVML_WINE_LOCALE:-ja_JP.UTF-8}
WINEPREFIX=\${WINEPREFIX:-$3}
WINEDEBUG=\${WINEDEBUG:--all}
WINEDLLOVERRIDES=\${WINEDLLOVERRIDES:-mscoree,mshtml=}
export LC_ALL WINEPREFIX WINEDEBUG WINEDLLOVERRIDES
exec $2 "\$@"
EOF
  chmod 755 "$scratch/runner"
  mv -f "$scratch/runner" "$runner"
}

# --- all of it --------------------------------------------------------------------

install_missing
prefix=$cache/prefix-$(folder_key)
if [ ! -d "$prefix" ]; then build_prefix; fi
ln -sfnT "$prefix" "$cache/current"
if [ "$want_wine" -eq 1 ]; then prepare_wine; fi
printf '%s\n' "$prefix"
