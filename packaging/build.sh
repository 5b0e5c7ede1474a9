#!/usr/bin/env bash
# Makes the Windows installer of a built tree, and the update information that lists it.
#
# build.sh [--settings FILE] [--version X.Y.Z] [--dist DIR] [--tool FILE] [--out DIR] [--quick] [--always-silent]
#   --settings  plain settings of the update server (default: server.example.txt beside this script)
#   --version   version shown by Windows (default: the project's)
#   --dist      the program as installed (default: build/windows/dist)
#   --tool      qor_release.exe (default: build/windows/tools/release/qor_release.exe)
#   --out       where to put setup.exe, qor_netcfg.fsc and qor_updateinfo.dat (default: build/installer)
#   --quick          compresses fast instead of well, for tests
#   --always-silent  an installer that shows nothing even without /S, for tests
set -euo pipefail
. "$(dirname "$0")/../tools/setup/common.sh"

here=$(cd "$(dirname "$0")" && pwd)
settings=$here/server.example.txt
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' "$ROOT/CMakeLists.txt")
dist=$BUILD/windows/dist
tool=$BUILD/windows/tools/release/qor_release.exe
out=$BUILD/installer
options=()
while [ $# -gt 0 ]; do
    case $1 in
    --settings) settings=$2; shift ;;
    --version) version=$2; shift ;;
    --dist) dist=$2; shift ;;
    --tool) tool=$2; shift ;;
    --out) out=$2; shift ;;
    --quick) options+=(-DQUICK) ;;
    --always-silent) options+=(-DALWAYS_SILENT) ;;
    --help | -h) sed -n '2,12s/^# \{0,1\}//p' "$0"; exit 0 ;;
    *) die "unknown option $1; --help says more" ;;
    esac
    shift
done
[ -e "$dist/QorSoundKit.exe" ] || die "$dist holds no QorSoundKit.exe; build the program first"
[ -e "$tool" ] || die "$tool is missing; build the target qor_release first"
[ -e "$settings" ] || die "$settings is missing"
command -v makensis >/dev/null || die "makensis is missing; install the package nsis"
need_space "$out" 100

work=$(mktemp -d)
export WINEPREFIX=$work/prefix
trap 'wineserver -k 2>/dev/null || true; rm -rf "$work"' EXIT
wine_environment
copy_prefix "$WINEPREFIX"
release() { "$WINE" "$tool" "$@" </dev/null || die "qor_release $1 failed"; }

release netcfg "$(realpath "$settings")" "$(realpath "$out")/qor_netcfg.fsc"

# The uninstaller deletes what was installed and nothing else.
{
    echo '!macro DeleteInstalledFiles'
    (cd "$dist" && find . -path ./config -prune -o -type f -printf '%P\n') | sort | sed 's|/|\\|g; s|.*|    Delete "$INSTDIR\\&"|'
    (cd "$dist" && find . -mindepth 1 -path ./config -prune -o -type d ! -name . -printf '%P\n') | sort -r | sed 's|/|\\|g; s|.*|    RMDir "$INSTDIR\\&"|'
    echo '!macroend'
} >"$work/files.nsh"

icon=$dist/../src/resources/art/demo/demo.ico
[ ! -e "$icon" ] || options+=("-DICON=$(realpath "$icon")")
makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$version" -DDIST="$(realpath "$dist")" \
    -DNETCFG="$(realpath "$out")/qor_netcfg.fsc" -DFILELIST="$work/files.nsh" -DOUTPUT="$(realpath "$out")/setup.exe" \
    -DSIZE_KB="$(du -sk "$dist" | cut -f1)" "${options[@]}" "$here/installer.nsi"

# A 32-bit stub would end with success on 64-bit systems without having installed anything.
machine=$(od -An -tx2 -j $(($(od -An -tu4 -j 60 -N 4 "$out/setup.exe") + 4)) -N 2 "$out/setup.exe" | tr -d ' ')
[ "$machine" = 8664 ] || die "$out/setup.exe is not a 64-bit program (machine $machine)"

release updateinfo "$(realpath "$out")/qor_updateinfo.dat" "$(realpath "$out")/setup.exe"
release check "$(realpath "$out")/qor_netcfg.fsc" "$(realpath "$out")/qor_updateinfo.dat" "$(realpath "$out")/setup.exe"
say "installer: $out/setup.exe ($(du -k "$out/setup.exe" | cut -f1) KB); upload it with qor_updateinfo.dat"
