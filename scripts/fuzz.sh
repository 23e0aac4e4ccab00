#!/usr/bin/env bash
#
# Runs the fuzzers, each for a number of seconds (30) on the seeds of
# fuzz/corpus, TVML_FUZZ_JOBS (as many as there are processors) at once. What
# they find in new inputs is kept under build/fuzz/corpus for the next run; a
# failing input stays under build/fuzz/findings, and the exit status tells of it.
#
#   scripts/fuzz.sh [SECONDS [FUZZER...]]

set -euo pipefail

seconds=${1:-30}
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- pipeline description talk ini command analysis

source=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${TVML_FUZZ_BUILD:-$source/build/fuzz}
cd "$source"
scripts/setup.sh fuzz
cmake --preset fuzz -B "$build" >/dev/null
cmake --build "$build" --target fuzzers

run_one() {
  local fuzzer=$1 dictionary=programme log=$build/findings/$1.log status=0
  [ "$fuzzer" != description ] || dictionary=description
  mkdir -p "$build/corpus/$fuzzer" "$build/findings"
  "$build/fuzz_$fuzzer" "$build/corpus/$fuzzer" "fuzz/corpus/$fuzzer" \
    -dict="fuzz/dictionaries/$dictionary.dict" -max_total_time="$seconds" \
    -max_len=4096 -timeout=60 -rss_limit_mb=4096 -print_final_stats=1 \
    -artifact_prefix="$build/findings/$fuzzer-" >"$log" 2>&1 || status=$?
  [ "$status" -eq 0 ] || tail -n 40 "$log"
  printf '%s: %s s, %s executions\n' "$fuzzer" "$seconds" \
    "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")"
  return "$status"
}

jobs=${TVML_FUZZ_JOBS:-$(nproc)}
status=0
running=0
for fuzzer; do
  if [ "$running" -ge "$jobs" ]; then
    wait -n || status=1
    running=$((running - 1))
  fi
  run_one "$fuzzer" &
  running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
  wait -n || status=1
  running=$((running - 1))
done
exit "$status"
