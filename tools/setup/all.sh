#!/usr/bin/env bash
# Sets the machine up, once: Debian packages, Qt for Windows, the Wine prefix. What needs the network or one core only
# runs beside the rest; its output is shown when it has ended. One checkout at a time.
set -euo pipefail
. "$(dirname "$0")/common.sh"
setup=$(cd "$(dirname "$0")" && pwd)

is_complete() { [ -z "$("$setup/packages.sh" --missing)" ] && [ -e "$(qt_dir)" ] && [ -e "$(wine_template_dir)" ]; }

# The lock belongs to `flock`, which closes it for what it starts: a wineserver that stays behind does not hold it.
if [ "${1:-}" != --locked ]; then
    ! is_complete || exit 0
    mkdir -p "$CACHE" 2>/dev/null || die "cannot create $CACHE"
    code=0
    flock --nonblock --conflict-exit-code 75 -o "$CACHE/lock" "$0" --locked || code=$?
    [ "$code" = 75 ] || exit "$code"
    say "another checkout is setting up this machine; waiting for it"
    exec flock -o "$CACHE/lock" "$0" --locked
fi

[ -e "$(qt_dir)" ] || [ -e "$(qt_work_dir)/done-unpack" ] || need_space "$CACHE" 2000
background=()
trap '[ ${#background[@]} = 0 ] || kill "${background[@]}" 2>/dev/null || true' EXIT
output=$(mktemp -d)
begin() { # begin NAME: starts setup/NAME.sh in the background
    "$setup/$1.sh" >"$output/$1" 2>&1 &
    background+=($!)
}
finish() { # finish NAME PID: waits for it, shows what it said, and ends when it failed
    local code=0
    wait "$2" || code=$?
    cat "$output/$1"
    [ "$code" = 0 ] || exit "$code"
}

begin fetch-qt
"$setup/packages.sh"
finish fetch-qt "${background[0]}"

for other in "$CACHE"/qt-work*; do # half a build by another recipe or compiler
    [ ! -e "$other" ] || [ "$other" = "$(qt_work_dir)" ] || rm -rf "$other"
done
for other in "$CACHE"/qt-[0-9]*; do
    [ ! -e "$other" ] || [ "$other" = "$(qt_dir)" ] ||
        say "$other is Qt by another recipe or compiler; delete it when no other checkout or machine needs it"
done
begin wine
"$setup/qt/build.sh"
finish wine "${background[1]}"
background=()
rm -rf "$output"
