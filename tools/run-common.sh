# shellcheck shell=bash
# Shared by the scripts that run the panel under Wine. Sourced after `set -euo pipefail`.
. "$(dirname "${BASH_SOURCE[0]}")/setup/common.sh"

DIST=$BUILD/windows/dist
HEADSET=$BUILD/windows/simulator/headset.exe
RUN_PREFIX=$BUILD/run/prefix
PRODUCT_KEY='HKLM\SOFTWARE\QorSoundKit'

# make_prefix DIR: a Wine prefix that is there or not at all, also when this is interrupted.
make_prefix() {
    [ ! -e "$1/system.reg" ] || return 0
    rm -rf "$1.new"
    copy_prefix "$1.new"
    rm -rf "$1"
    mv "$1.new" "$1"
}

# set_value KEY NAME TYPE DATA, in the 64-bit view of the registry of $WINEPREFIX
set_value() {
    "$WINE" reg add "$1" /v "$2" /t "$3" /d "$4" /f /reg:64 >/dev/null 2>&1 </dev/null ||
        die "cannot write the registry value $2 in $WINEPREFIX"
}

# The product key as an installer leaves it.
install_product_key() {
    set_value "$PRODUCT_KEY" DisplayName REG_SZ "QorSound Kit"
    set_value "$PRODUCT_KEY" InstallPath REG_SZ "$(windows_path "$DIST")"
}

# headset COMMAND...: steers the simulated headset in $WINEPREFIX, see simulator/README.md.
headset() {
    "$WINE" "$HEADSET" "$@" </dev/null || die "the simulated headset does not obey: $*"
}

# end_panel PID: asks the panel to end, as a newer instance would, so that it says goodbye to its device. It gets
# five seconds.
end_panel() {
    set_value "$PRODUCT_KEY" exitCmd REG_DWORD 1
    for _ in $(seq 50); do
        kill -0 "$1" 2>/dev/null || return 0
        sleep 0.1
    done
    return 1
}
