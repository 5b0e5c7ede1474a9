#!/usr/bin/env bash
# Makes the Wine prefix template that every run and test copies. Named by a hash of this recipe.
set -euo pipefail
. "$(dirname "$0")/common.sh"

template=$(wine_template_dir)
[ ! -e "$template/system.reg" ] || exit 0

say "creating the Wine prefix (about 10 seconds)"
need_space "$CACHE" 1500
wine_environment
fresh=$template.new
rm -rf "$fresh"
mkdir -p "$CACHE"
export WINEPREFIX=$fresh
log=$(mktemp)
{
    timeout 120 "$WINE" wineboot -i &&
        timeout 60 "$WINE" regedit /S "$(windows_path "$ROOT/tools/wine/base.reg")"
} >"$log" 2>&1 </dev/null || { tail -n 5 "$log" >&2; die "creating the Wine prefix failed; the log is $log"; }
# Debian's Wine does not find its own fonts; these hold the glyphs of the caption buttons.
cp /usr/share/wine/fonts/marlett.ttf /usr/share/wine/fonts/symbol.ttf /usr/share/wine/fonts/wingding.ttf \
    "$fresh/drive_c/windows/Fonts/"
wineserver -k || true
wineserver -w || true
remove_server_folder "$fresh"
rm -f "$fresh/wineserver" "$log"
mv "$fresh" "$template"
