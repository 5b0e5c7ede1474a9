#!/usr/bin/env bash
# update_round_test.sh DIST TOOL: a whole update as a user sees it. Installs the panel, offers a newer installer on an
# FTP server, starts the panel, clicks the check button, consents, and waits until the newer installer has done its work.
# A failure leaves a picture of the screen in QORSOUND_ROUND_PICTURE, when that is set.
set -euo pipefail
. "$(dirname "$0")/panel_session.sh"

CHECK_X=809 CHECK_Y=480 # the check button of the upgrade page, from the window's corner

/usr/bin/python3 "$(dirname "$0")/ftp_server.py" "$work" "$work/port" &
started+=($!)
wait_for 60 test -s "$work/port" || die "the FTP server did not start"
cat >"$work/settings.txt" <<END
address = 127.0.0.1
port = $(cat "$work/port")
user = maker
password = secret
folder = newer
END
package installed --version 2.0.5
package newer --version 2.0.6 --always-silent

say "installing 2.0.5"
wine_run "$work/installed/setup.exe" /S || die "the installer ended with $?"
cmp "$work/installed/setup.exe" "$INSTALLED/backup/setup_backup.exe" || die "nothing was installed"
wine_run reg add "$PRODUCT_KEY" /v language /t REG_DWORD /d 1 /f /reg:64

# window NAME: sets ID, X, Y, W, H of the visible window of that title.
window() {
    local geometry
    for ID in $(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null); do
        geometry=$(xdotool getwindowgeometry "$ID" 2>/dev/null) || continue
        [[ $geometry =~ Position:\ (-?[0-9]+),(-?[0-9]+).*Geometry:\ ([0-9]+)x([0-9]+) ]] || continue
        X=${BASH_REMATCH[1]} Y=${BASH_REMATCH[2]} W=${BASH_REMATCH[3]} H=${BASH_REMATCH[4]}
        [ "$W" -lt 50 ] || return 0
    done
    return 1
}
fail() {
    import -silent -window root "${QORSOUND_ROUND_PICTURE:-$work/screen.png}" || true
    die "$1"
}

say "starting the panel"
(cd "$INSTALLED" && exec "$WINE" ./QorSoundKit.exe) </dev/null >"$work/panel.log" 2>&1 &
panel=$!
started+=("$panel")
wait_for 60 window 'QorSound Kit' || fail "the panel's window did not appear"
sleep 1 # the re-layout after construction

say "clicking the check button"
xdotool mousemove $((X + CHECK_X)) $((Y + CHECK_Y)) sleep 0.2 click 1
wait_for 60 window upgrade || fail "the panel did not ask for consent"
saved=$(find "$DRIVE_C" -name qor_setup.exe)
[ -z "$saved" ] || fail "the installer was saved before the consent"

say "consenting"
xdotool key Return
updated() { [ "$(value "$UNINSTALL_KEY" DisplayVersion)" = 2.0.6 ]; }
wait_for 60 updated || fail "the newer installer did not install"
saved=$(find "$DRIVE_C" -name qor_setup.exe)
cmp "$saved" "$work/newer/setup.exe" || fail "another installer was saved"
cmp "$INSTALLED/backup/setup_backup.exe" "$work/newer/setup.exe" || fail "the new package was not kept"
wait "$panel" || fail "the old panel ended with $?"

say "the new version is current"
(cd "$INSTALLED" && exec "$WINE" ./QorSoundKit.exe) </dev/null >"$work/panel.log" 2>&1 &
started+=($!)
wait_for 60 window 'QorSound Kit' || fail "the updated panel's window did not appear"
sleep 1
before=$(find "$DRIVE_C" -name qor_setup.exe -printf '%T@')
xdotool mousemove $((X + 115)) $((Y + 781)) sleep 0.2 click 1 sleep 0.5 # the navigation to the upgrade page
xdotool mousemove $((X + CHECK_X)) $((Y + CHECK_Y)) sleep 0.2 click 1
! wait_for 3 window upgrade || fail "the updated panel offers the same version again"
expect "time of the saved installer" "$(find "$DRIVE_C" -name qor_setup.exe -printf '%T@')" "$before"
say "whole update: all well"
