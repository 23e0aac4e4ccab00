#!/usr/bin/env bash
#
# Builds the engine for browsers and tests it against the native library.
#
# Exit status: 0 all passed, 77 emscripten or the npm packages cannot be had here.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

skip() {
  echo "test-engine: SKIPPED: $1" >&2
  exit 77
}

readonly most_bytes=358400 # compressed

command -v node >/dev/null && command -v npm >/dev/null || skip "node and npm are not here"
status=0
scripts/prepare-wasm.sh >/dev/null || status=$?
[ "$status" -ne 77 ] || skip "emscripten cannot be installed here"
[ "$status" -eq 0 ] || exit "$status"

cmake --preset wasm >/dev/null
cmake --build --preset wasm
cmake --preset release >/dev/null
cmake --build --preset release --target tvmlengine_native

(cd web/engine && npm ci --loglevel=error) || skip "the npm packages cannot be had here"
export ENGINE=$PWD/build/wasm/tvmlengine.wasm NATIVE=$PWD/build/release/tvmlengine_native
(cd web/engine && npm run --silent test)

size=$(node -e 'const fs = require("fs"), zlib = require("zlib");
  console.log(zlib.brotliCompressSync(fs.readFileSync(process.env.ENGINE)).length)')
[ "$size" -le "$most_bytes" ] || { echo "test-engine: error: $size bytes compressed" >&2; exit 1; }
echo "test-engine: passed; the engine takes $size bytes compressed"
