# shellcheck shell=bash
# A Wine prefix in $work of the script's own, and on demand a display; both are gone when the script ends. Sourced
# after `set -euo pipefail`.
. "$(dirname "${BASH_SOURCE[0]}")/../setup/common.sh"

[ -e "$(wine_template_dir)/system.reg" ] || die "no Wine prefix template; run tools/setup/wine.sh"

# On the template's file system, where a copy can share its files by hard links.
mkdir -p "$CACHE/runs"
work=$(mktemp -d "$CACHE/runs/XXXXXX")
leftovers=("$work") # folders that go with the session
export WINEPREFIX=$work/prefix
started=()                                  # process ids to end with the session
session_arguments=("$@")
clean_session() {
    trap - EXIT
    wineserver -k 2>/dev/null || true
    timeout 10 wineserver -w 2>/dev/null || true
    [ "${#started[@]}" = 0 ] || kill "${started[@]}" 2>/dev/null || true
    remove_server_folder "$WINEPREFIX"
    rm -rf "${leftovers[@]}" || true
}
end_session() {
    local code=$?
    clean_session
    exit "$code"
}
# Runs the script from its beginning in another session: once in some hundred, Wine's desktop comes up without its display
# driver, and no window can be made in it.
start_again() {
    local attempt=${QORSOUND_ATTEMPT:-1}
    [ "$attempt" -lt 3 ] || die "Wine's desktop has no display driver"
    say "Wine's desktop has no display driver; trying again"
    clean_session
    QORSOUND_ATTEMPT=$((attempt + 1)) exec "$0" "${session_arguments[@]}"
}
trap end_session EXIT
trap 'exit 130' INT TERM

wine_environment
copy_prefix "$WINEPREFIX"

# start_display [WIDTHxHEIGHT [DPI [TASKBAR]]]: a display in memory that holds the panel's window; sets DISPLAY. Before
# the first program of the prefix. TASKBAR: height in pixels of what Windows keeps for itself at the bottom.
start_display() {
    local size=${1:-1400x1000} dpi=${2:-96} taskbar=${3:-0}
    [ "$dpi" = 96 ] || sed -i "/^\[Control Panel..Desktop\]/{n;a\\
\"LogPixels\"=dword:$(printf %08x "$dpi")
}" "$WINEPREFIX/user.reg"
    Xvfb -noreset -displayfd 5 -screen 0 "${size}x24" 5>"$work/display" >/dev/null 2>&1 &
    local server=$!
    started+=("$server")
    until [ -s "$work/display" ]; do
        kill -0 "$server" 2>/dev/null || die "Xvfb did not start"
        sleep 0.05
    done
    DISPLAY=:$(cat "$work/display")
    export DISPLAY
    [ "$taskbar" = 0 ] || xprop -root -f _NET_WORKAREA 32c \
        -set _NET_WORKAREA "0, 0, ${size%x*}, $((${size#*x} - taskbar))"
}
