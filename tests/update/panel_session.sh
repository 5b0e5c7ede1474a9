# shellcheck shell=bash
# For the tests of installed programs: packages of the panel, and a Wine session with a display.
# Sourced after `set -euo pipefail` by scripts with the arguments DIST (the program as installed) and TOOL
# (qor_release.exe).
. "$(dirname "${BASH_SOURCE[0]}")/../../tools/wine/session.sh"

dist=$(realpath "$1") tool=$(realpath "$2")
DRIVE_C=$WINEPREFIX/drive_c
INSTALLED=$DRIVE_C/'Program Files/QorSoundKit'
PRODUCT_KEY='HKLM\SOFTWARE\QorSoundKit'
UNINSTALL_KEY='HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\QorSoundKit'

wine_run() { timeout 100 "$WINE" "$@" </dev/null >>"$work/wine.log" 2>&1; }

# wait_for SECONDS COMMAND...: until the command succeeds.
wait_for() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$deadline" ] || return 1
        sleep 0.1
    done
}

# give_first INPUT COMMAND...: the first input, words of xdotool, after a window came up: given again every three seconds
# until the command succeeds, since what comes while X maps the window is lost. All further input is given once.
give_first() {
    local input attempt
    read -ra input <<<"$1"
    shift
    for attempt in {1..15}; do
        xdotool "${input[@]}"
        ! wait_for 3 "$@" || return 0
    done
    return 1
}

# value KEY NAME: the data of a value in the 64-bit view; nothing when it is missing.
value() {
    "$WINE" reg query "$1" /v "$2" /reg:64 2>/dev/null </dev/null | tr -d '\r' |
        sed -n 's/^ *[^ ].*    REG_[A-Z]*    //p'
}
key_exists() { "$WINE" reg query "$1" /reg:64 >/dev/null 2>&1 </dev/null; }

# expect WHAT ACTUAL WANTED
expect() { [ "$2" = "$3" ] || die "$1 is \"$2\", expected \"$3\""; }

# package NAME OPTIONS...: builds $work/NAME/setup.exe of $dist with $work/settings.txt.
package() {
    local name=$1
    shift
    mkdir -p "$work/$name"
    "$ROOT/packaging/build.sh" --dist "$dist" --tool "$tool" --settings "$work/settings.txt" --out "$work/$name" \
        --quick "$@" >"$work/$name.log" 2>&1 || { cat "$work/$name.log" >&2; die "the package \"$name\" was not built"; }
}

# window NAME: sets ID, X, Y, W, H of the visible window of that title.
window() {
    local geometry
    for ID in $(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null); do
        geometry=$(xdotool getwindowgeometry "$ID" 2>/dev/null) || continue
        [[ $geometry =~ Position:\ (-?[0-9]+),(-?[0-9]+).*Geometry:\ ([0-9]+)x([0-9]+) ]] || continue
        X=${BASH_REMATCH[1]} Y=${BASH_REMATCH[2]} W=${BASH_REMATCH[3]} H=${BASH_REMATCH[4]}
        [ "$W" -lt 50 ] || return 0
    done
    return 1
}

fail() { # leaves a picture of the screen in QORSOUND_PICTURE, when that is set
    import -silent -window root "${QORSOUND_PICTURE:-$work/screen.png}" || true
    die "$1"
}

# start_panel: the installed panel, up to its window; sets panel to its process id.
start_panel() {
    (cd "$INSTALLED" && WINEQT_FORCE_STDERR_LOGGING=1 exec "$WINE" ./QorSoundKit.exe) </dev/null >"$work/panel.log" 2>&1 &
    panel=$!
    started+=("$panel")
    wait_for 60 window 'QorSound Kit' && return
    ! grep -q 'CreateWindowEx failed' "$work/panel.log" || start_again
    fail "the panel's window did not appear"
}

start_display
