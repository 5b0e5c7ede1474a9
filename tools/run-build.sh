#!/usr/bin/env bash
# Sets up the machine, once, and builds the program as installed: build/windows/dist.
set -euo pipefail
. "$(dirname "$0")/setup/common.sh"

for step in packages qt wine; do
    "$ROOT/tools/setup/$step.sh"
done
. "$ROOT/tools/setup/env.sh"

tree=$BUILD/windows
mkdir -p "$tree"
log=$tree/run-build.log
cached() { sed -n "s/^$1:[^=]*=//p" "$tree/CMakeCache.txt" 2>/dev/null || true; }

# Ninja itself configures anew when a build file changed; a checkout that was moved or another Qt needs a fresh start.
if [ ! -e "$tree/build.ninja" ] || [ "$(cached CMAKE_HOME_DIRECTORY)" != "$ROOT" ] ||
    [ "$(cached QORSOUND_QT)" != "$QORSOUND_QT" ]; then
    need_space "$BUILD" 1500
    say "configuring the build (10 seconds)"
    (cd "$ROOT" && cmake --fresh --preset windows) >"$log" 2>&1 ||
        { tail -n 15 "$log" >&2; die "configuring failed; the log is $log"; }
fi

[ -e "$tree/dist/QorSoundKit.exe" ] || say "building the panel (some 3 minutes on two cores)"
if [ -t 1 ]; then # one line of progress that overwrites itself
    NINJA_STATUS='-- building %p ' cmake --build "$tree" --target dist || die "building failed"
else
    cmake --build "$tree" --target dist -- --quiet >"$log" 2>&1 ||
        { tail -n 30 "$log" >&2; die "building failed; the log is $log"; }
fi
