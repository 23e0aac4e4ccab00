#!/usr/bin/env bash
#
# Tests the language server with real clients: a client on the library that editors
# use, Neovim without a screen, and the extension for Visual Studio Code, which is
# checked, packed into build/editors/tvmlfilter.vsix and looked into.
#
#   ./test-editors.sh [PROGRAM]
#
# Without PROGRAM the release build is brought up to date. What is missing is
# installed. Exit status: 0 all passed, 1 something failed, 77 nothing failed but
# something could not be had here (said on the last lines).

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

skipped=()
skip() {
  echo "test-editors: SKIPPED: $1" >&2
  skipped+=("$1")
}

program=${1:-}
if [ -z "$program" ]; then
  scripts/setup.sh
  cmake --preset release >/dev/null
  cmake --build build/release --target tvmlfilter_host
  program=build/release/tvmlfilter
fi
TVMLFILTER=$(realpath "$program")
export TVMLFILTER

# Node's own tools, and the packages that the lock files pin.
npm_packages() {
  (cd "$1" && npm ci --ignore-scripts --no-progress >/dev/null 2>"$2")
}
have_node() {
  command -v node >/dev/null && command -v npm >/dev/null &&
    [ "$(node -p 'process.versions.node.split(".")[0]')" -ge 18 ]
}

install_debian() {
  command -v "$1" >/dev/null && return 0
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo -n)
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y \
    -o DPkg::Lock::Timeout=300 install --no-install-recommends "$2" >&2
}

mkdir -p build/editors
if ! have_node; then
  skip "Node.js 18 or later is not installed: no client on vscode-jsonrpc, no extension"
else
  if npm_packages tests/editors "$PWD/build/editors/npm-client.log"; then
    node --test tests/editors/
  else
    skip "the packages of tests/editors cannot be installed (build/editors/npm-client.log)"
  fi
  if npm_packages editors/vscode "$PWD/build/editors/npm-vscode.log"; then
    editors/vscode/pack.sh "$TVMLFILTER"
  else
    skip "the packages of editors/vscode cannot be installed (build/editors/npm-vscode.log)"
  fi
fi

if install_debian nvim neovim; then
  tests/editors/neovim.sh
else
  skip "Neovim cannot be installed"
fi

skip "the workbench in a browser: there is no test of it yet"

printf 'test-editors: passed'
printf '; SKIPPED: %s' "${skipped[@]}"
printf '\n'
[ ${#skipped[@]} -eq 0 ] || exit 77
