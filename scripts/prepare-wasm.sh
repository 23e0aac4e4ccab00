#!/usr/bin/env bash
#
# Prepares the build for browsers (preset "wasm") on Debian 12.
#
#   scripts/prepare-wasm.sh
#
# Installs Debian's emscripten and builds expat from Debian's own source package
# with 16-bit characters, into a folder that is kept in the user's cache and
# reused. The last line of the standard output is that folder; the link "current"
# beside it leads to it, too. All messages go to the standard error.
#
# Exit status: 0 all is ready; 1 something failed; 77 emscripten cannot be
# installed here.

set -euo pipefail

readonly recipe=1 # to be raised with any change in how the folder is made
cache=${XDG_CACHE_HOME:-$HOME/.cache}/tvmlfilter/wasm
mkdir -p "$cache"
scratch=$(mktemp -d "$cache/tmp.XXXXXXXX")
trap 'rm -rf -- "$scratch"' EXIT

say() { printf 'prepare-wasm: %s\n' "$*" >&2; }

fail() {
  say "error: $*"
  exit 1
}

# run LOGNAME COMMAND...: runs quietly, shows the log's end when it fails.
run() {
  local log=$scratch/$1.log
  shift
  "$@" >"$log" 2>&1 </dev/null || { tail -n 40 "$log" >&2; return 1; }
}

apt_get() {
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo -n)
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 \
    apt-get -q -y -o DPkg::Lock::Timeout=600 "$@"
}

install_packages() {
  command -v em++ >/dev/null && command -v dpkg-source >/dev/null && return
  say "installing emscripten"
  run apt-update apt_get update || say "warning: the package index could not be brought up to date"
  run apt-install apt_get install --no-install-recommends emscripten dpkg-dev cmake ninja-build || {
    say "SKIPPED: Debian's emscripten cannot be installed here"
    exit 77
  }
}

# Source packages are enabled in a private copy of the machine's apt
# configuration, so that the machine's stays as it is.
fetch_expat() {
  local apt=$scratch/apt file options
  mkdir -p "$apt/parts" "$apt/lists/partial" "$scratch/src"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ ! -f "$file" ] || sed -n -E 's/^[[:space:]]*deb(-src)?[[:space:]]+/deb-src /p' "$file"
  done | sort -u >"$apt/sources.list"
  for file in /etc/apt/sources.list.d/*.sources; do
    [ ! -f "$file" ] || sed -E 's/^types:.*/Types: deb-src/I' "$file" >"$apt/parts/${file##*/}"
  done
  options=(-q -o "Dir::Etc::sourcelist=$apt/sources.list" -o "Dir::Etc::sourceparts=$apt/parts"
           -o "Dir::State::lists=$apt/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
           -o APT::Sandbox::User="$(id -un)")
  cd "$scratch/src"
  run source-update apt-get "${options[@]}" update ||
    say "warning: the index of source packages could not be fetched in full"
  # The newest update may be gone again, while the base release stays.
  run source apt-get "${options[@]}" source --only-source expat ||
    run source-base apt-get "${options[@]}" source -t "$(. /etc/os-release && echo "$VERSION_CODENAME")" \
      --only-source expat || fail "Debian's source package expat could not be fetched"
  cd - >/dev/null
}

build_expat() {
  local from
  from=$(dirname "$(find "$scratch/src" -path '*/lib/expat.h' -printf '%h\n' | head -n 1)")
  run configure emcmake cmake -S "$from" -B "$scratch/expat" -G Ninja -Wno-dev \
    -DCMAKE_BUILD_TYPE=MinSizeRel -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
    -DEXPAT_CHAR_TYPE=ushort -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_TOOLS=OFF \
    -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_BUILD_TESTS=OFF -DEXPAT_BUILD_DOCS=OFF ||
    fail "expat could not be configured"
  # CMake defines it without a value, which Debian's corrections compare with 1.
  sed -i 's/^#define XML_DTD$/#define XML_DTD 1/' "$scratch/expat/expat_config.h"
  run build cmake --build "$scratch/expat" || fail "expat could not be built"
  run install env DESTDIR="$scratch/stage" cmake --install "$scratch/expat" ||
    fail "expat could not be installed into the cache"
  [ -f "$scratch/stage$prefix/lib/libexpatw.a" ] || fail "expat was not built with 16-bit characters"
  # The rename makes it complete. Another run may have been quicker.
  mv -T "$scratch/stage$prefix" "$prefix" 2>/dev/null || [ -d "$prefix" ] ||
    fail "the folder could not be put into place: $prefix"
}

install_packages
key=$({ echo "recipe $recipe"; dpkg-query -W -f='${Version}' emscripten; } | sha256sum | cut -c 1-16)
prefix=$cache/prefix-$key
if [ ! -d "$prefix" ]; then
  say "building expat"
  fetch_expat
  build_expat
fi
ln -sfnT "$prefix" "$cache/current"
printf '%s\n' "$prefix"
