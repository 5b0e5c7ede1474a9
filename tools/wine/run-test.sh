#!/usr/bin/env bash
# run-test.sh console|gui PROGRAM.exe [ARGUMENTS...]: runs one Windows test program under Wine in a prefix of its
# own and, for gui, on an X display of its own. Ends with the program's exit code.
set -euo pipefail
. "$(dirname "$0")/../setup/common.sh"

mode=$1 program=$2
shift 2
template=$(wine_template_dir)
[ -e "$template/system.reg" ] || die "no Wine prefix template; run tools/setup/wine.sh"

# On the template's file system, where a copy can share its files by hard links.
mkdir -p "$CACHE/runs"
work=$(mktemp -d "$CACHE/runs/XXXXXX")
export WINEPREFIX=$work/prefix TMPDIR=$work # wineserver leaves a folder of its own in TMPDIR
xvfb_pid=
finish() {
    local code=$?
    trap - EXIT
    wineserver -k 2>/dev/null || true
    timeout 10 wineserver -w 2>/dev/null || true
    [ -z "$xvfb_pid" ] || kill "$xvfb_pid" 2>/dev/null || true
    rm -rf "$work" || true
    exit "$code"
}
trap finish EXIT
trap 'exit 130' INT TERM

wine_environment
copy_prefix "$WINEPREFIX"
qt=$(qt_dir)
WINEPATH="Z:${qt//\//\\}\\bin;Z:\\usr\\lib\\gcc\\x86_64-w64-mingw32\\12-posix;Z:\\usr\\x86_64-w64-mingw32\\lib"
export WINEPATH WINEQT_FORCE_STDERR_LOGGING=1

if [ "$mode" = gui ]; then
    exec 5>"$work/display"
    Xvfb -displayfd 5 -screen 0 1400x1000x24 >/dev/null 2>&1 &
    xvfb_pid=$!
    for _ in $(seq 200); do
        [ ! -s "$work/display" ] || break
        sleep 0.05
    done
    DISPLAY=:$(cat "$work/display")
    export DISPLAY
fi

code=0
timeout -k 10 "${QORSOUND_TEST_TIMEOUT:-230}" "$WINE" "$program" "$@" </dev/null || code=$?
[ "$code" != 124 ] || printf 'timed out: %s\n' "$program" >&2
exit "$code"
