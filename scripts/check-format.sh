#!/usr/bin/env bash
#
# Fails when a tracked source file is not as .clang-format wants it, and shows
# where. clang-format -i puts a file right.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

git ls-files -z -- '*.c' '*.cpp' '*.h' | xargs -0 -r clang-format --dry-run -Werror
