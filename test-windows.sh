#!/usr/bin/env bash
#
# Sets up, cross-builds for 32-bit Windows, and runs all tests under Wine.
# Arguments go to ctest:
#
#   ./test-windows.sh -R Unloading      runs the tests whose names hold "Unloading"
#
# TVML_WINDOWS_TARGETS holds the targets to build, all of them without it; only
# the tests of what is built are run. Exit status: 0 all tests pass, 77 skipped
# because wine32 cannot be installed here, others: something failed.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

status=0
prefix=$(scripts/prepare-win32.sh --wine --allow-downgrades | tail -n 1) || status=$?
case $status in
  0) ;;
  3)
    echo "test-windows: skipped: wine32 cannot be installed here (why: above)"
    exit 77
    ;;
  *) exit "$status" ;;
esac
[ -x "$prefix/bin/run-windows-program" ] || {
  echo "test-windows: error: $prefix holds no run-windows-program" >&2
  exit 1
}

read -r -a targets <<<"${TVML_WINDOWS_TARGETS:-all}"
cmake --preset win32 -DCMAKE_PREFIX_PATH="$(dirname "$prefix")/current"
cmake --build --preset win32 --target "${targets[@]}"

# Wine's services live as long as its server and keep the outputs of the program
# that started them; a test runner waits for the end of its tests' outputs. So
# they are started here, and ended with the tests. A server that runs already is
# somebody else's and is left alone.
mine=0
if "$prefix/bin/wine-server" -p </dev/null >/dev/null 2>&1; then mine=1; fi
cleanup() {
  if [ "$mine" -eq 1 ]; then "$prefix/bin/wine-server" -k || true; fi
}
trap cleanup EXIT
"$prefix/bin/run-windows-program" cmd /c exit </dev/null >/dev/null 2>&1

ctest --preset win32 --parallel "$(nproc)" "$@"
