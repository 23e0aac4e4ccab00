#!/usr/bin/env bash
#
# Installs what the build and the tests need on Debian 12 and is not there yet.
#
#   scripts/setup.sh [fuzz] [libcxx] [bench] [package]     with what these need
#
# Asks nothing and needs no network when all is there. Exit status: 0 all is
# there, 1 something could not be installed.

set -euo pipefail

packages=(
  build-essential cmake ninja-build git
  libexpat1-dev libicu-dev libcli11-dev nlohmann-json3-dev libtomlplusplus-dev
  libgtest-dev libbenchmark-dev
  python3 python3-polib esbuild
  clang-format valgrind mandoc pkg-config
)

for extra; do
  case $extra in
    fuzz) packages+=(clang libclang-rt-14-dev) ;;
    libcxx) packages+=(clang libc++-dev libc++abi-dev) ;;
    bench) packages+=(libmd4c-dev libmd4c-html0-dev libcmark-dev) ;;
    package) packages+=(lintian) ;;
    *)
      echo "setup: error: nothing is known to belong to $extra" >&2
      exit 2
      ;;
  esac
done

installed() {
  dpkg -s "$1" 2>/dev/null | grep -q '^Status: install ok installed'
}

missing=()
for package in "${packages[@]}"; do
  installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "setup: as root, install these packages: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi

echo "setup: installing ${missing[*]}" >&2
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y
     -o DPkg::Lock::Timeout=300)
# An index that is out of step for one architecture is no reason to stop: what
# counts is whether the packages can be installed.
"${apt[@]}" update >&2 || echo "setup: the package lists could not all be updated" >&2
"${apt[@]}" install --no-install-recommends "${missing[@]}" >&2
