#!/usr/bin/env bash
#
# Builds and runs the benchmarks; one run prints every figure. Arguments go to
# the program:
#
#   scripts/bench.sh --benchmark_filter=dialogue

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh bench
cmake --preset release -B build/bench -DTVML_BENCH=ON -DTVML_TESTS=OFF >/dev/null
cmake --build build/bench --target tvmlfilter_bench
exec build/bench/tvmlfilter_bench "$@"
