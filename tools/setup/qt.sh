#!/usr/bin/env bash
# Builds Qt for 64-bit Windows from Debian's source package, once per machine and recipe.
# The result goes to a cache folder; a folder that is there is whole, because it is renamed into
# place as the last step.
set -euo pipefail
. "$(dirname "$0")/common.sh"

target=$(qt_dir)
[ ! -e "$target/bin/Qt5Widgets.dll" ] || exit 0

work=$CACHE/qt-work
need_space "$CACHE" 4000
rm -rf "$work"
mkdir -p "$work/lists/partial" "$work/src" "$work/build"
log=$work/log.txt

# step MESSAGE COMMAND...: runs it quietly; a failure ends the script with the tail of the log. No "||" stands behind
# the command, since bash ignores `set -e` within functions that are called in front of one.
current_step=
step() {
    current_step=$1
    shift
    say "$current_step"
    "$@" >>"$log" 2>&1
    current_step=
}
tell_failed_step() {
    local code=$?
    [ "$code" != 0 ] && [ "$code" -lt 128 ] && [ -n "$current_step" ] || return 0 # from 128 on: interrupted
    tail -n 15 "$log" >&2
    printf 'error: failed: %s (log: %s)\n' "$current_step" "$log" >&2
}
trap tell_failed_step EXIT

# Source entries are the machine's own, with the type changed to deb-src, in a private list.
write_source_list() {
    local file
    for file in /etc/apt/sources.list.d/*.sources; do
        [ ! -e "$file" ] || { sed -E 's/^Types:.*/Types: deb-src/' "$file"; echo; } >>"$work/private.sources"
    done
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ ! -e "$file" ] || sed -nE 's/^deb (.*)/deb-src \1/p' "$file" >>"$work/private.list"
    done
}

# private_apt FILE COMMAND...: apt with that list of sources only
private_apt() {
    local list=$1
    shift
    apt-get -q -o Dir::Etc::sourcelist="$list" -o Dir::Etc::sourceparts=- \
        -o Dir::State::lists="$work/lists" -o Dir::Cache="$work/apt-cache" \
        -o APT::Sandbox::User=root -o APT::Get::List-Cleanup=0 "$@"
}

fetch_source() {
    mkdir -p "$work/apt-cache/archives/partial"
    local list=$work/private.sources
    [ -s "$list" ] || list=$work/private.list
    private_apt "$list" update || true # one of several sources may be out of reach; the download decides
    cd "$work/src"
    private_apt "$list" --download-only source qtbase-opensource-src
}

unpack_source() {
    cd "$work/src"
    tar xf qtbase-opensource-src_*.orig.tar.xz
    tar xf qtbase-opensource-src_*.debian.tar.xz
    mv qtbase-everywhere-src-* qtbase 2>/dev/null || mv qtbase-opensource-src-* qtbase
    local patch
    while read -r patch; do
        case $patch in ''|'#'*) continue ;; esac
        if patch -d qtbase -p1 --dry-run -f -s <"debian/patches/$patch" >/dev/null; then
            patch -d qtbase -p1 -f -s <"debian/patches/$patch"
        else
            echo "$patch" >>"$work/left-out.txt"
        fi
    done <debian/patches/series
}

configure_qt() {
    cd "$work/build"
    local options
    mapfile -t options <"$ROOT/tools/setup/qt-options.txt"
    "$work/src/qtbase/configure" -prefix "$target" "${options[@]}"
}

# Progress as the share of object files that exist; make itself prints nothing of the kind.
build_qt() {
    cd "$work/build"
    nice make -j"$(nproc)" >>"$log" 2>&1 &
    local make_pid=$! total=1180 done=0 last=-1
    trap 'kill $make_pid 2>/dev/null; exit 130' INT TERM
    while kill -0 "$make_pid" 2>/dev/null; do
        sleep 5
        done=$(find . -name '*.o' | wc -l)
        local percent=$((done * 100 / total))
        [ "$percent" -le 99 ] || percent=99
        if [ "$percent" -ge $((last + 5)) ]; then
            say "building Qt: $percent % ($done object files)"
            last=$percent
        fi
    done
    wait "$make_pid" || { tail -n 15 "$log" >&2; die "building Qt failed (log: $log)"; }
}

install_qt() {
    cd "$work/build"
    make install INSTALL_ROOT="$work/stage"
    mkdir -p "$(dirname "$target")"
    rm -rf "$target"
    mv "$work/stage$target" "$target"
}

make_tool_links
say "Qt $QT_VERSION for Windows is built once per machine, about 12-15 minutes on two cores"
write_source_list
step "fetching the Qt source package" fetch_source
step "unpacking and patching" unpack_source
[ ! -e "$work/left-out.txt" ] || say "patches that do not apply to the repacked tree, left out: $(tr '\n' ' ' <"$work/left-out.txt")"
step "configuring Qt (about 2 minutes)" configure_qt
build_qt
step "installing Qt into $target" install_qt
rm -rf "$work"
