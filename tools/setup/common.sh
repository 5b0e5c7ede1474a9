# Shared by the set-up scripts: places, messages, and the environment in which Wine runs.
# Sourced, never run. Every script that sources it has `set -euo pipefail` on.

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
CACHE=${QORSOUND_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/qorsound-kit}
BUILD=$ROOT/build
WINE=/usr/lib/wine/wine64

say() { printf '%s\n' "-- $*"; }
windows_path() { printf '%s\n' "Z:${1//\//\\}"; } # Wine's drive Z is the whole file system
die() { printf '%s\n' "error: $*" >&2; exit 1; }

free_megabytes() { df -Pm "$1" | awk 'NR==2 {print $4}'; }

# need_space DIR MEGABYTES: one clear line instead of a compiler error in the middle of a build.
need_space() {
    mkdir -p "$1" 2>/dev/null || die "cannot create $1"
    local free
    free=$(free_megabytes "$1")
    [ "$free" -ge "$2" ] || die "$1 has $free MB free; this step needs about $2 MB"
}

# The Qt build is named by its version and by the recipe that made it, so that a changed recipe
# is rebuilt and a new checkout on the same machine finds the finished one.
QT_VERSION=5.15.8
qt_recipe() { cat "$ROOT"/tools/setup/qt/* | sha256sum | cut -c1-12; }
qt_dir() { printf '%s\n' "$CACHE/qt-$QT_VERSION-$(qt_recipe)"; }
qt_work_dir() { printf '%s\n' "$CACHE/qt-work-$(qt_recipe)"; } # while it is being built

wine_environment() {
    export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} LC_ALL=C.UTF-8
    # Without a debugger, since a program that damaged its heap takes Wine's along, and the exit code becomes 0.
    export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=;winedbg.exe=d"
    unset WAYLAND_DISPLAY || true
}

wine_template_dir() {
    local recipe
    recipe=$(cat "$ROOT/tools/setup/wine.sh" "$ROOT/tools/wine/base.reg" | sha256sum | cut -c1-12)
    printf '%s\n' "$CACHE/prefix-$recipe"
}

# copy_prefix DIR: a prefix of its own from the template in some 20 ms. The registry files and those of device
# installation are real copies, because Wine writes a hard-linked file in place and would change the template
# and every other copy.
copy_prefix() {
    local template
    template=$(wine_template_dir)
    mkdir -p "$(dirname "$1")"
    cp -al "$template" "$1" 2>/dev/null || { rm -rf "$1"; cp -a "$template" "$1"; }
    cp --remove-destination "$template"/*.reg "$1"/
    cp --remove-destination "$template"/drive_c/windows/inf/* "$1"/drive_c/windows/inf/
    rm -f "$1/wineserver"
}
