#!/usr/bin/env bash
# installer_test.sh DIST TOOL: builds the installer, installs silently, installs over it while files are in use, and
# uninstalls while the panel runs.
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
    expect InstallPath "$(value "$PRODUCT_KEY" InstallPath)" 'C:\Program Files\QorSoundKit'
    expect ConfigPath "$(value "$PRODUCT_KEY" ConfigPath)" 'C:\Program Files\QorSoundKit'
    expect "number of links" "$(links)" 2
}

say "silent installation"
wine_run "$setup" /S || die "the installer ended with $?"
check_installed

say "a file in use stops the installation before it changes anything"
cat >"$work/hold.nsi" <<END
Target amd64-unicode
RequestExecutionLevel user
SilentInstall silent
OutFile "$work/hold.exe"
Section
    FileOpen \$0 "\$PROGRAMFILES64\\QorSoundKit\\Qt5Gui.dll" a
    FileOpen \$1 "\$PROGRAMFILES64\\held" w
    Sleep 100000
SectionEnd
END
makensis -V1 "$work/hold.nsi"
"$WINE" "$work/hold.exe" </dev/null >>"$work/wine.log" 2>&1 &
holder=$!
started+=("$holder")
wait_for 30 test -e "$DRIVE_C/Program Files/held" || die "the file is not held"
echo damaged >"$INSTALLED/Qt5Core.dll"
code=0
wine_run "$setup" /S || code=$?
expect "exit code" "$code" 2
expect "replaced file" "$(cat "$INSTALLED/Qt5Core.dll")" damaged
kill "$holder"

say "installation over an older one ends the helper and keeps the user's settings"
"$WINE" 'C:\Program Files\QorSoundKit\normal.exe' </dev/null >>"$work/wine.log" 2>&1 &
helper=$!
wine_run reg add "$PRODUCT_KEY" /v vol_locked /t REG_DWORD /d 1 /f /reg:64
mkdir -p "$INSTALLED/config"
echo curves | tee "$work/curves" >"$INSTALLED/config/eqs.bin"
wine_run "$setup" /S || die "the second installation ended with $?"
check_installed
wait "$helper" || die "the helper ended with $?"
expect vol_locked "$(value "$PRODUCT_KEY" vol_locked)" 0x1
expect eqs.bin "$(cat "$INSTALLED/config/eqs.bin")" curves

say "the package that is kept can repair the installation"
echo damaged >"$INSTALLED/QorSoundKit.exe"
wine_run 'C:\Program Files\QorSoundKit\backup\setup_backup.exe' /S || die "the repair ended with $?"
check_installed

say "uninstallation ends the panel and removes all of it, and nothing else"
start_panel
echo mine >"$INSTALLED/mine.txt"
temporary=$(dirname "$(find "$DRIVE_C/users" -name QorSoundKit.log)")
cp "$setup" "$temporary/qor_setup.exe"
wine_run "$(value "$UNINSTALL_KEY" QuietUninstallString | tr -d '"' | sed 's| /S$||')" /S || die "the uninstaller ended with $?"
uninstalled() { ! key_exists 'HKCU\SOFTWARE\QorSoundKit'; } # the last it does
wait_for 60 uninstalled || die "left behind: $(find "$INSTALLED")"
wait "$panel" || die "the panel ended with $?"
expect "what is left" "$(cd "$INSTALLED" && find . -mindepth 1)" ./mine.txt
expect "left in the temporary folder" "$(find "$temporary" -iname 'qor*')" ''
expect "number of links" "$(links)" 0
! key_exists "$UNINSTALL_KEY" || die "the entry among the installed programs is still there"
! key_exists "$PRODUCT_KEY" || die "the product key is still there"
say "installer: all well"
