#!/bin/sh
# Writes the golden copies of the examples anew with a built command-line host:
#     scripts/refresh-golden.sh [build/release/tvmlfilter]
# Read the difference line by line before you commit it; a golden copy is only
# as right as the eyes that saw it last.
set -eu

cd "$(dirname "$0")/.."
host=${1:-build/release/tvmlfilter}
if [ ! -x "$host" ]; then
    echo "$0: no program at $host; build it, or name it: $0 FOLDER/tvmlfilter" >&2
    exit 2
fi
for script in examples/*/programme.txt; do
    folder=${script%programme.txt}
    "$host" convert "$script" -d "${folder}description.xml" -o "${folder}golden.tvml"
done
git --no-pager diff --stat -- examples
