#!/usr/bin/env bash
# Makes the Windows installer of a built tree, and the update information that lists it.
#
# build.sh [--library FILE] [--helper FILE]... [--settings FILE] [--previous FILE] [--version X.Y.Z] [--out DIR]
#          [--dist DIR] [--tool FILE] [--quick] [--always-silent]
#   --library   the maker's qor_ecd_api.dll, in place of the simulated headset
#   --helper    a helper program of the maker, such as normal.exe, under its own name; may be repeated
#   --settings  plain settings of the update server (default: server.example.txt beside this script)
#   --previous  the setup.exe that is on the server now: makes qor_updateinfo_both.dat as well (see README.md)
#   --version   version shown by Windows (default: the project's)
#   --out       where to put setup.exe, qor_netcfg.fsc and qor_updateinfo.dat (default: build/installer)
#   --dist      the program as installed (default: build/windows/dist)
#   --tool      qor_release.exe (default: build/windows/tools/release/qor_release.exe)
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
previous=
makers=() # files that replace those of dist
options=()
while [ $# -gt 0 ]; do
    case $1 in
    --library | --helper | --settings | --previous | --version | --dist | --tool | --out)
        [ $# -gt 1 ] || die "$1 needs a value; --help says more"
        ;;&
    --library)
        [ "$(basename "$2")" = qor_ecd_api.dll ] || die "$2 must be named qor_ecd_api.dll"
        makers+=("$2")
        shift
        ;;
    --helper) makers+=("$2"); shift ;;
    --settings) settings=$2; shift ;;
    --previous) previous=$(realpath "$2"); shift ;;
    --version) version=$2; shift ;;
    --dist) dist=$2; shift ;;
    --tool) tool=$2; shift ;;
    --out) out=$2; shift ;;
    --quick) options+=(-DQUICK) ;;
    --always-silent) options+=(-DALWAYS_SILENT) ;;
    --help | -h) sed -n '2,16s/^# \{0,1\}//p' "$0"; exit 0 ;;
    *) die "unknown option $1; --help says more" ;;
    esac
    shift
done
[ -e "$dist/QorSoundKit.exe" ] || die "$dist holds no QorSoundKit.exe; build the program first"
[ -e "$tool" ] || die "$tool is missing; build the target qor_release first"
for file in "$settings" ${previous:+"$previous"} "${makers[@]}"; do
    [ -e "$file" ] || die "$file is missing"
done
command -v makensis >/dev/null || die "makensis is missing; install the package nsis"
need_space "$out" 100
out=$(realpath "$out")

work=$(mktemp -d)
export WINEPREFIX=$work/prefix
trap 'wineserver -k 2>/dev/null || true; remove_server_folder "$WINEPREFIX"; rm -rf "$work"' EXIT
wine_environment
copy_prefix "$WINEPREFIX"
release() { "$WINE" "$tool" "$@" </dev/null || die "qor_release $1 failed"; }

# The tree that goes into the package.
cp -r "$dist" "$work/dist"
rm -rf "$work/dist/config"
[ ${#makers[@]} = 0 ] || cp "${makers[@]}" "$work/dist/"

release netcfg "$(realpath "$settings")" "$out/qor_netcfg.fsc"

# The uninstaller deletes what was installed and nothing else.
files() { (cd "$work/dist" && find . "$@" -printf '%P\n') | LC_ALL=C sort | sed 's|/|\\|g'; }
{
    echo '!macro ForEachInstalledFile action'
    # shellcheck disable=SC2016
    files -type f | sed 's|.*|    !insertmacro ${action} "&"|'
    echo '!macroend'
    echo '!macro RemoveInstalledFolders'
    files -mindepth 1 -type d | tac | sed 's|.*|    RMDir "$INSTDIR\\&"|'
    echo '!macroend'
} >"$work/files.nsh"

for picture in wizard header; do
    rsvg-convert "$here/art/$picture.svg" | convert png:- -type TrueColor "BMP3:$work/$picture.bmp"
done
icon=$dist/../src/resources/art/demo/demo.ico
[ ! -e "$icon" ] || options+=("-DICON=$(realpath "$icon")")
makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$version" -DDIST="$work/dist" -DNETCFG="$out/qor_netcfg.fsc" \
    -DFILELIST="$work/files.nsh" -DFILESTAMP="$(sha256sum <"$work/files.nsh" | cut -c1-16)" -DART="$work" \
    -DOUTPUT="$out/setup.exe" -DSIZE_KB="$(du -sk "$work/dist" | cut -f1)" "${options[@]}" "$here/installer.nsi"

# A 32-bit stub would end with success on 64-bit systems without having installed anything.
machine=$(od -An -tx2 -j $(($(od -An -tu4 -j 60 -N 4 "$out/setup.exe") + 4)) -N 2 "$out/setup.exe" | tr -d ' ')
[ "$machine" = 8664 ] || die "$out/setup.exe is not a 64-bit program (machine $machine)"

release updateinfo "$out/qor_updateinfo.dat" "$out/setup.exe"
[ -z "$previous" ] || release updateinfo "$out/qor_updateinfo_both.dat" "$previous" "$out/setup.exe"
release check "$out/qor_netcfg.fsc" "$out/qor_updateinfo.dat" "$out/setup.exe" | tee "$work/check.txt"
size=$(stat -c %s "$out/setup.exe")
say "installer: $out/setup.exe ($((size / 1024)) KB)"

# Last, so that nobody overlooks it.
not_for_release() { printf '\n*** NOT FOR RELEASE: %s\n' "$1" >&2; }
for file in "$work"/dist/*.dll "$work"/dist/*.exe; do
    # The product's name in the version resource of the simulator's files, in UTF-16.
    if LC_ALL=C grep -qaP 'S\x00i\x00m\x00u\x00l\x00a\x00t\x00o\x00r\x00\x00' "$file"; then
        not_for_release "$(basename "$file") is the simulated one; give the maker's with --library and --helper"
    fi
done
! grep -q '^server \(127\|0\)\.' "$work/check.txt" ||
    not_for_release "the panel would ask its own machine for updates; give the server's settings with --settings"
# The download's percentage is counted in 32 bits: size * 100 must stay below 2^31.
[ "$size" -le 21000000 ] || not_for_release "setup.exe has more than 21 MB; the panel's progress bar would run backwards"
