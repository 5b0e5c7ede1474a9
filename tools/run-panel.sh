#!/usr/bin/env bash
# Opens build/windows/dist/QorSoundKit.exe on $DISPLAY and waits for its end. The panel's registry, and with it the
# simulated headset's settings, stay in build/run/prefix.
set -euo pipefail
. "$(dirname "$0")/run-common.sh"

xdpyinfo >/dev/null 2>&1 || die "cannot open the display $DISPLAY; without DISPLAY set, ./run takes pictures instead"
wine_environment
export WINEPREFIX=$RUN_PREFIX
if [ ! -e "$WINEPREFIX/system.reg" ]; then
    make_prefix "$WINEPREFIX"
    # Tests have no window manager, a person has one.
    set_value 'HKCU\Software\Wine\X11 Driver' Managed REG_SZ Y
fi
install_product_key
headset resume

say "opening the panel; its close button hides it in the notification area, Ctrl-C here ends it"
say "the simulated headset is steered with tools/headset.sh, e.g. tools/headset.sh key"
cd "$DIST"
# In a session of its own, so that Ctrl-C reaches this script alone.
setsid "$WINE" ./QorSoundKit.exe </dev/null &
panel=$!
trap 'trap - INT TERM; end_panel $panel || kill $panel; exit 130' INT TERM
code=0
wait "$panel" || code=$?
exit "$code"
