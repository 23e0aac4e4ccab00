#!/usr/bin/env bash
#
# Neovim without a screen, with the plug-in as a user has it: opens a script, sees the
# diagnostic, completes behind "Ａ：（", takes the code action, shows the TVML script.
# TVMLFILTER names the program.

set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf -- "$folder"' EXIT

mkdir -p "$folder/config/nvim/lua" "$folder/番組"
cp "$here/../../editors/neovim/tvmlfilter.lua" "$folder/config/nvim/lua/"
printf 'require("tvmlfilter").setup({ program = "%s" })\n' "$TVMLFILTER" >"$folder/config/nvim/init.lua"
printf 'language = "ja"\n' >"$folder/番組/tvmlfilter.toml"
printf 'Ａ：こんばんは。\nＡ：（お辞義）\n' >"$folder/番組/ニュース.txt"

LC_ALL=C.UTF-8 XDG_CONFIG_HOME=$folder/config XDG_DATA_HOME=$folder/data \
  XDG_STATE_HOME=$folder/state XDG_CACHE_HOME=$folder/cache \
  timeout 60 nvim --headless "$folder/番組/ニュース.txt" -c "luafile $here/neovim_test.lua"
echo 'neovim: passed'
