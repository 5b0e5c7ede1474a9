#!/usr/bin/env bash
# Windows' reg command on the registry of the panel that ./run opens, e.g.
# tools/run-reg.sh query 'HKLM\SOFTWARE\QorSoundKit'.
set -euo pipefail
. "$(dirname "$0")/run-common.sh"
[ -e "$RUN_PREFIX/system.reg" ] || die "no panel was opened yet; start ./run on a display first"
wine_environment
export WINEPREFIX=$RUN_PREFIX
exec "$WINE" reg "$@"
