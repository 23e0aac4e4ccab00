#!/usr/bin/env bash
#
# Sets up and tests what runs in browsers: the types and the style of the page's
# sources, its timing and drawing, the page itself in Debian's Chromium, and the
# engine for pages.
#
# Exit status: 0 all passed, 77 the page's tools or the browser cannot be had here.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

skip() {
  echo "test-web: SKIPPED: $1" >&2
  exit 77
}

install_chromium() {
  command -v chromium >/dev/null && return
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 \
    install --no-install-recommends chromium fonts-noto-cjk >&2
}

command -v node >/dev/null && command -v npm >/dev/null || skip "node and npm are not here"
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target tvmlfilter_host

(cd web/storyboard && npm ci --no-audit --no-fund --loglevel=error) ||
  skip "the npm packages cannot be had here"
cd web/storyboard
npm run --silent check
mkdir -p ../../build/web
npm run --silent unit
cd ../..

install_chromium || skip "Chromium cannot be installed here"
work=$(mktemp -d)
trap 'rm -rf "$work"; rm -f web/storyboard/.browser-test.mjs' EXIT
board() { build/release/tvmlfilter storyboard "$1" -d "$2" -o "$3" --language ja; }
description=examples/news_ja/description.xml
board examples/news_ja/programme.txt "$description" "$work/page.html"
cat >"$work/hostile.txt" <<'SCRIPT'
title: <script>alert(1)</script>
super: <img src=x onerror=alert(2)> (red)
A: </script><b>"quotes" & 'more'</b> (caption: <iframe src=//x>)
subimage: "><svg onload=alert(3)>.png
leftsuper: &lt;b&gt; --> <!-- {{x}}
(<object>)
SCRIPT
board "$work/hostile.txt" "$description" "$work/hostile.html"
for _ in $(seq 77); do cat examples/news_ja/programme.txt; done >"$work/long.txt"
board "$work/long.txt" "$description" "$work/long.html"
script=$(stat -c %s "$work/long.txt") page=$(stat -c %s "$work/long.html")
[ "$page" -lt $((script * 10)) ] || { echo "test-web: error: $page bytes for a script of $script" >&2; exit 1; }
for format in "$work"/*.txt examples/*/programme.txt; do
  build/release/tvmlfilter storyboard "$format" -d "$description" --format json \
    -o "$work/$(echo "$format" | tr / _).json"
done
cd web/storyboard
npm run --silent schema "$work"/*.json
PAGE=$work/page.html HOSTILE=$work/hostile.html LONG=$work/long.html npm run --silent browser
cd ../..
scripts/test-engine.sh # its exit status is of the same kind
echo "test-web: passed"
