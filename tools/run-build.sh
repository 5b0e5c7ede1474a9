#!/usr/bin/env bash
# Sets up the machine, once, and builds the program as installed, build/windows/dist, and the simulated headset's
# command.
set -euo pipefail
. "$(dirname "$0")/setup/common.sh"
"$ROOT/tools/setup/all.sh"
. "$ROOT/tools/setup/env.sh"
"$ROOT/tools/configure.sh" windows

tree=$BUILD/windows
log=$tree/run-build.log
[ -e "$tree/dist/QorSoundKit.exe" ] || say "building the panel (some 3 minutes on two cores)"
if [ -t 1 ]; then # one line of progress that overwrites itself
    NINJA_STATUS='-- building %p ' cmake --build "$tree" --target dist headset || die "building failed"
else
    cmake --build "$tree" --target dist headset -- --quiet >"$log" 2>&1 ||
        { tail -n 30 "$log" >&2; die "building failed; the log is $log"; }
fi
