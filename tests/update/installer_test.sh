#!/usr/bin/env bash
# installer_test.sh DIST TOOL: builds the installer, installs silently, installs again over it, and uninstalls.
set -euo pipefail
. "$(dirname "$0")/panel_session.sh"

cat >"$work/settings.txt" <<'END'
address = 192.0.2.77
port = 2121
folder = kit
END
package first
setup=$work/first/setup.exe

links() { find "$DRIVE_C" -name 'QorSound Kit.lnk' | wc -l; }

check_installed() {
    # All files of the program, and besides them only what the installer adds.
    diff -r --exclude=config "$dist" "$INSTALLED" >"$work/differences" || true
    grep -v "^Only in $INSTALLED: \(backup\|qor_netcfg.fsc\|uninst.exe\)$" "$work/differences" &&
        die "the installed files differ"
    [ -e "$INSTALLED/config" ] && [ ! -s "$work/curves" ] && die "the package holds somebody's curves"
    cmp "$setup" "$INSTALLED/backup/setup_backup.exe" || die "the package was not kept"
    cmp "$work/first/qor_netcfg.fsc" "$INSTALLED/qor_netcfg.fsc" || die "the server configuration is another one"
    expect DisplayName "$(value "$PRODUCT_KEY" DisplayName)" 'QorSound Kit'
    expect InstallPath "$(value "$PRODUCT_KEY" InstallPath)" 'C:\Program Files\QorSoundKit'
    expect ConfigPath "$(value "$PRODUCT_KEY" ConfigPath)" 'C:\Program Files\QorSoundKit'
    expect QuietUninstallString "$(value "$UNINSTALL_KEY" QuietUninstallString)" \
        '"C:\Program Files\QorSoundKit\uninst.exe" /S'
    expect "number of links" "$(links)" 2
}

say "silent installation"
wine_run "$setup" /S || die "the installer ended with $?"
check_installed

say "installation over an older one keeps the user's settings"
wine_run reg add "$PRODUCT_KEY" /v vol_locked /t REG_DWORD /d 1 /f /reg:64
wine_run reg add 'HKCU\SOFTWARE\QorSoundKit' /f /reg:64
mkdir -p "$INSTALLED/config"
echo curves | tee "$work/curves" >"$INSTALLED/config/eqs.bin"
echo damaged >"$INSTALLED/QorSoundKit.exe"
wine_run "$setup" /S || die "the second installation ended with $?"
check_installed
expect vol_locked "$(value "$PRODUCT_KEY" vol_locked)" 0x1
expect eqs.bin "$(cat "$INSTALLED/config/eqs.bin")" curves
expect exitCmd "$(value "$PRODUCT_KEY" exitCmd)" ''

say "the package that is kept can repair the installation"
echo damaged >"$INSTALLED/QorSoundKit.exe"
wine_run 'C:\Program Files\QorSoundKit\backup\setup_backup.exe' /S || die "the repair ended with $?"
check_installed

say "uninstallation removes all of it, and nothing else"
echo mine >"$INSTALLED/mine.txt"
wine_run 'C:\Program Files\QorSoundKit\uninst.exe' /S || die "the uninstaller ended with $?"
uninstalled() { ! key_exists 'HKCU\SOFTWARE\QorSoundKit'; } # the last it does
wait_for 60 uninstalled || die "left behind: $(find "$INSTALLED")"
expect "the user's own file" "$(cat "$INSTALLED/mine.txt")" mine
expect "number of files" "$(find "$INSTALLED" -type f | wc -l)" 1
expect "number of folders" "$(find "$INSTALLED" -type d | wc -l)" 1
expect "number of links" "$(links)" 0
! key_exists "$UNINSTALL_KEY" || die "the entry among the installed programs is still there"
! key_exists "$PRODUCT_KEY" || die "the product key is still there"
say "installer: all well"
