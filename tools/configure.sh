#!/usr/bin/env bash
# configure.sh PRESET: configures build/PRESET, unless that was done for this checkout and this Qt. Ninja itself
# configures anew when a build file changed; a checkout that was moved or another Qt needs a fresh start.
set -euo pipefail
. "$(dirname "$0")/setup/env.sh"

preset=$1
tree=$BUILD/$preset
log=$tree/configure.log
cached() { sed -n "s/^$1:[^=]*=//p" "$tree/CMakeCache.txt" 2>/dev/null; }
uses_this_qt() { [ "$preset" = host ] || [ "$(cached QORSOUND_QT)" = "$QORSOUND_QT" ]; }

if [ ! -e "$tree/build.ninja" ] || [ "$(cached CMAKE_HOME_DIRECTORY)" != "$ROOT" ] || ! uses_this_qt; then
    need_space "$BUILD" 1500
    say "configuring build/$preset (10 seconds)"
    mkdir -p "$tree"
    (cd "$ROOT" && cmake --fresh --preset "$preset") >"$log" 2>&1 ||
        { tail -n 15 "$log" >&2; die "configuring failed; the log is $log"; }
fi
