#!/usr/bin/env bash
#
# Checks the extension, bundles it and packs it with the programs into
# build/editors/tvmlfilter.vsix, then looks into what was packed.
#
#   editors/vscode/pack.sh PROGRAM
#
# The Windows program comes from build/win32, when it was built.

set -euo pipefail

program=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")"
vsix=../../build/editors/tvmlfilter.vsix

node scripts/grammar.mjs "$program" --check
npm run --silent check

copy_program() { # FOLDER TO NAME
  mkdir -p "bin/$2"
  cp "$1/$3" "$1/keyword.ini" "$1/Mirvol.ini" "$1/default.xml" "bin/$2/"
}
rm -rf bin out
copy_program "$(dirname "$program")" linux-x64 tvmlfilter
strip "bin/linux-x64/tvmlfilter"
if [ -f ../../build/win32/tvmlfilter.exe ]; then
  copy_program ../../build/win32 win32 tvmlfilter.exe
else
  echo 'pack: build/win32 holds no program; the package is for Linux alone' >&2
fi

npm run --silent bundle -- --log-level=warning
mkdir -p ../../build/editors
npm run --silent package >/dev/null

contents=$(python3 -c 'import sys, zipfile; print(*zipfile.ZipFile(sys.argv[1]).namelist(), sep="\n")' "$vsix")
for file in extension/out/extension.js extension/package.json extension/bin/linux-x64/tvmlfilter \
  extension/language-configuration.json extension/syntaxes/tvmlscript.tmLanguage.json \
  extension/package.nls.ja.json extension/l10n/bundle.l10n.ja.json; do
  grep -qxF "$file" <<<"$contents" || {
    echo "pack: $file is not in the package" >&2
    exit 1
  }
done
if grep -E 'node_modules|/src/' <<<"$contents"; then
  echo 'pack: the package holds what it should not' >&2
  exit 1
fi
echo "pack: build/editors/tvmlfilter.vsix, $(stat -c %s "$vsix") bytes"
