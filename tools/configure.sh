#!/usr/bin/env bash
# configure.sh PRESET: configures build/PRESET, unless that was done for this checkout with these tools. Ninja itself
# configures anew when a build file changed; a checkout that was moved needs a fresh start, other tools an empty folder.
set -euo pipefail
. "$(dirname "$0")/setup/env.sh"

preset=$1
tree=$BUILD/$preset
log=$tree/configure.log
cached() { sed -n "s/^$1:[^=]*=//p" "$tree/CMakeCache.txt" 2>/dev/null; }

[ "$(cached QORSOUND_TOOLS)" = "$QORSOUND_TOOLS" ] || rm -rf "$tree"
if [ ! -e "$tree/build.ninja" ] || [ "$(cached CMAKE_HOME_DIRECTORY)" != "$ROOT" ]; then
    need_space "$BUILD" 1500
    say "configuring build/$preset (10 seconds)"
    mkdir -p "$tree"
    (cd "$ROOT" && cmake --fresh --preset "$preset") >"$log" 2>&1 ||
        { tail -n 15 "$log" >&2; die "configuring failed; the log is $log"; }
fi
