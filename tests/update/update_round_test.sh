#!/usr/bin/env bash
# update_round_test.sh DIST TOOL: a whole update as a user sees it. Installs the panel, offers a newer installer on an
# FTP server, starts the panel, clicks the check button, consents, and waits until the newer installer has done its work.
# A failure leaves a picture of the screen in QORSOUND_PICTURE, when that is set.
set -euo pipefail
. "$(dirname "$0")/panel_session.sh"
. "$(dirname "$0")/ftp_servers.sh"

CHECK_X=809 CHECK_Y=480 # the check button of the upgrade page, from the window's corner

server=${QORSOUND_FTP_SERVER:-pyftpdlib}
start_ftp_server "$server" || die "$server: $FTP_NOTE"
[ -z "$FTP_NOTE" ] || say "note: $FTP_NOTE"
cat >"$work/settings.txt" <<END
address = 127.0.0.1
port = $FTP_PORT
user = $FTP_USER
password = $FTP_PASSWORD
folder = newer
END
newest=$dist
cp -r "$newest" "$work/older"
mkdir "$work/older/old"
echo "no longer part of the newer version" >"$work/older/old/part.dll"
dist=$work/older package installed --version 2.0.5
dist=$newest package newer --version 2.0.6 --always-silent
serve "$work/newer/setup.exe" newer
serve "$work/newer/qor_updateinfo.dat" newer

say "installing 2.0.5"
wine_run "$work/installed/setup.exe" /S || die "the installer ended with $?"
cmp "$work/installed/setup.exe" "$INSTALLED/backup/setup_backup.exe" || die "nothing was installed"
[ -e "$INSTALLED/old/part.dll" ] || die "a file of a folder was not installed"
wine_run reg add "$PRODUCT_KEY" /v language /t REG_DWORD /d 1 /f /reg:64

checks() { # RESULT COUNT: whether the log tells of so many update checks with that result
    local log
    log=$(find "$DRIVE_C/users" -name QorSoundKit.log)
    [ -n "$log" ] && [ "$(grep -c "update check: $1.\?\$" "$log")" -ge "$2" ]
}
step() { say "$1 ($((($(date +%s%N) - begun) / 1000000)) ms)"; }
begun=$(date +%s%N)

say "starting the panel"
start_panel
checks 1 1 || fail "the check at the start did not find the newer version"
step "the check at the start: a new version"

say "clicking the check button"
begun=$(date +%s%N)
check() { echo "mousemove $((X + CHECK_X)) $((Y + CHECK_Y)) sleep 0.2 click 1"; }
give_first "$(check)" window upgrade || fail "the panel did not ask for consent"
step "checked, downloaded, CRC right, consent asked for"
saved=$(find "$DRIVE_C" -name qor_setup.exe)
[ -z "$saved" ] || fail "the installer was saved before the consent"

say "consenting"
# By a click on OK: without a window manager, a box now and then stays without the keyboard.
click_ok="mousemove $((X + W * 33 / 100)) $((Y + H * 72 / 100)) sleep 0.2 click 1"
answered() { ! window upgrade; }
give_first "$click_ok" answered || fail "the question does not go away"
updated() { [ "$(value "$UNINSTALL_KEY" DisplayVersion)" = 2.0.6 ]; }
wait_for 60 updated || fail "the newer installer did not install"
saved=$(find "$DRIVE_C" -name qor_setup.exe)
cmp "$saved" "$work/newer/setup.exe" || fail "another installer was saved"
cmp "$INSTALLED/backup/setup_backup.exe" "$work/newer/setup.exe" || fail "the new package was not kept"
wait "$panel" || fail "the old panel ended with $?"

[ ! -e "$INSTALLED/old" ] || fail "what only the older version had is still there"

say "the new version is current"
before=$(find "$DRIVE_C" -name qor_setup.exe -printf '%T@')
start_panel
checks -6 1 || fail "the updated panel is not current"
picture() { import -silent -window root -crop "300x100+$((X + CHECK_X - 150))+$((Y + CHECK_Y - 50))" rgb:- | md5sum; }
first_page=$(picture)
turned() { [ "$(picture)" != "$first_page" ]; }
give_first "mousemove $((X + 115)) $((Y + 781)) sleep 0.2 click 1" turned || fail "the upgrade page does not come up"
read -ra check <<<"$(check)"
xdotool "${check[@]}"
wait_for 20 checks -6 2 ||
    fail "the updated panel did not check again, or found the same version newer"
expect "time of the saved installer" "$(find "$DRIVE_C" -name qor_setup.exe -printf '%T@')" "$before"
say "whole update: all well"
