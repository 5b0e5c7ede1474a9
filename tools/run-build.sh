#!/usr/bin/env bash
# Sets the machine up, once, and builds what ./run needs: the program as installed, build/windows/dist, and the
# simulated headset's command.
set -euo pipefail
. "$(dirname "$0")/setup/common.sh"
. "$(dirname "$0")/setup/progress.sh"
"$ROOT/tools/setup/all.sh"
. "$ROOT/tools/setup/env.sh"
"$ROOT/tools/configure.sh" windows

tree=$BUILD/windows
log=$tree/run-build.log
[ -e "$tree/dist/QorSoundKit.exe" ] || say "building the panel (about a minute)"
run_ninja "building the panel" "$log" "$tree" --target dist headset ||
    { grep -v '^@[0-9]* [0-9]*@ ' "$log" | tail -n 30 >&2; die "building failed; the log is $log"; }
