#!/usr/bin/env bash
#
# Sets up, builds, and converts an example programme: once by the program
# itself, which shows what it thinks of the script, and once through the
# library, as a host does it. Shows the result.
#
#   ./run.sh [FOLDER]     FOLDER of examples/, news_ja without it

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/setup.sh
cmake --preset release
cmake --build --preset release --target tvmlfilter_host

example=examples/${1:-news_ja}
build=build/release
result=$build/$(basename "$example").tvml
arguments=("$example/programme.txt")
[ ! -e "$example/description.xml" ] || arguments+=(-d "$example/description.xml")

"$build/tvmlfilter" convert "${arguments[@]}" -o "$result"
"$build/tvmlfilter" convert "${arguments[@]}" -o "$result.library" \
  --library "$build/libtvmlfilter.so"
cmp "$result" "$result.library"

printf '\n%s: %s lines of script, %s lines of TVML. Its head:\n\n' "$result" \
  "$(wc -l <"$example/programme.txt")" "$(wc -l <"$result")"
sed -n 1,12p "$result"
printf '\nThe first lines of talk:\n\n'
grep -m 5 'talk(' "$result"
