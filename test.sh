#!/usr/bin/env bash
#
# Sets up, builds and runs all tests. Arguments go to ctest:
#
#   ./test.sh -R host      runs the tests whose names hold "host"

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/setup.sh
cmake --preset release
cmake --build --preset release
ctest --preset release --parallel "$(nproc)" "$@"
