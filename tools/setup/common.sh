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

# What the machine compiles with, without Debian's revisions, which change no interface. Shorter before the packages
# are installed.
tool_versions() {
    dpkg-query -W -f '${Package} ${Version}\n' \
        g++ clang g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev qtbase5-dev-tools 2>/dev/null | sed 's/\( [^-+~]*\).*/\1/'
}

# The Qt build is named by its version, and by the recipe and the tools that made it: another recipe is built anew, a new
# checkout finds the finished one, and machines that share a home keep one each.
tools_key() { { cat "$ROOT"/tools/setup/qt/*; tool_versions; } | sha256sum | cut -c1-12; }
qt_dir() { find "$CACHE" -maxdepth 1 -name "qt-[0-9]*-$(tools_key)" 2>/dev/null || true; } # nothing before it is built
qt_work_dir() { printf '%s\n' "$CACHE/qt-work-$(tools_key)"; } # while it is being built
# Its sources are fetched before the tools are there to be asked.
qt_source_dir() { (. /etc/os-release && printf '%s\n' "$CACHE/qt-source-$ID${VERSION_ID:-}"); }

wine_environment() {
    export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} LC_ALL=C.UTF-8
    # Without a debugger, since a program that damaged its heap takes Wine's along, and the exit code becomes 0.
    export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=;winedbg.exe=d"
    # Debian's Wine 10 ends with "free(): invalid pointer" when TMPDIR is set.
    unset WAYLAND_DISPLAY TMPDIR || true
}

wine_template_dir() {
    local recipe
    recipe=$({ cat "$ROOT/tools/setup/wine.sh" "$ROOT/tools/wine/base.reg"; dpkg-query -W wine; } 2>/dev/null |
        sha256sum | cut -c1-12)
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

# remove_server_folder PREFIX: the folder that Debian's wineserver leaves in /tmp; the prefix holds its name.
remove_server_folder() {
    local name=''
    read -r name 2>/dev/null <"$1/wineserver" || true
    [[ $name != wine-?* ]] || rm -rf "/tmp/$name"
}
