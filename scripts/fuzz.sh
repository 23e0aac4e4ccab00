#!/bin/sh
# Runs the fuzzers, each for a number of seconds (30) on the seeds of
# fuzz/corpus. What they find in new inputs is kept under build/fuzz/corpus for
# the next run; a failing input stays under build/fuzz/findings, and the exit
# status tells of it.
#
#   scripts/fuzz.sh [SECONDS [FUZZER...]]
set -eu

seconds=${1:-30}
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- pipeline description talk ini command

source=$(cd "$(dirname "$0")/.." && pwd)
build=${TVML_FUZZ_BUILD:-$source/build/fuzz}
cd "$source"
cmake --preset fuzz -B "$build" >/dev/null
cmake --build "$build" --target fuzzers

status=0
for fuzzer; do
    case $fuzzer in
    description) dictionary=description ;;
    *) dictionary=programme ;;
    esac
    mkdir -p "$build/corpus/$fuzzer" "$build/findings"
    log=$build/findings/$fuzzer.log
    echo "$fuzzer: $seconds s"
    if ! "$build/fuzz_$fuzzer" "$build/corpus/$fuzzer" "fuzz/corpus/$fuzzer" \
        -dict="fuzz/dictionaries/$dictionary.dict" -max_total_time="$seconds" \
        -max_len=4096 -timeout=60 -rss_limit_mb=4096 -print_final_stats=1 \
        -artifact_prefix="$build/findings/$fuzzer-" >"$log" 2>&1; then
        tail -n 40 "$log"
        status=1
    fi
    sed -n 's/^stat::number_of_executed_units: */  executions: /p' "$log"
done
exit $status
