#!/usr/bin/env bash
# Steers the simulated headset of the panel that ./run opened, e.g. tools/headset.sh key. Without arguments it lists
# the commands.
set -euo pipefail
. "$(dirname "$0")/run-common.sh"
[ -e "$RUN_PREFIX/system.reg" ] || die "no panel was opened yet; start ./run on a display first"
[ -e "$HEADSET" ] || die "$HEADSET is missing; ./run builds it"
wine_environment
export WINEPREFIX=$RUN_PREFIX
exec "$WINE" "$HEADSET" "$@"
