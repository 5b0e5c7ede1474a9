#!/usr/bin/env bash
# Builds Qt for 64-bit Windows from Debian's source package, once per machine and recipe; the recipe is this folder.
# The result is renamed into the cache as the last step, so a folder that is there is whole. Interrupted, it goes on
# with the step in which it stopped, and compiles no file twice.
set -euo pipefail
. "$(dirname "$0")/../common.sh"
. "$(dirname "$0")/../progress.sh"
[ ! -e "$(qt_dir)" ] || exit 0

recipe=$ROOT/tools/setup/qt
source=$(qt_source_dir)
work=$(qt_work_dir)
log=$work/log.txt
objects=845 # that make compiles with these options

qt_version() { sed -n 's/^MODULE_VERSION = //p' "$work/qtbase/.qmake.conf"; }

unpack_source() {
    rm -rf "$work/qtbase"
    dpkg-source --no-check --skip-patches --extract "$source"/*.dsc "$work/qtbase"
    [[ $(qt_version) = 5.15.* ]] || die "apt offers Qt $(qt_version); needed is Qt 5.15"
    cd "$work/qtbase"
    local patch
    while read -r patch; do
        case $patch in ''|'#'*) continue ;; esac
        if patch -p1 --dry-run -f -s <"debian/patches/$patch" >/dev/null; then
            patch -p1 -f -s <"debian/patches/$patch"
        else
            echo "does not apply to the repacked sources, left out: $patch"
        fi
    done <debian/patches/series
    "$recipe/trim.sh" "$work/qtbase"
}

# The folders of compilers and of host tools that the makefiles ask for.
link_tools() {
    mkdir -p "$work/compilers" "$work/prefix/bin"
    ln -sfn "$recipe/compiler.sh" "$work/compilers/x86_64-w64-mingw32-clang"
    ln -sfn "$recipe/compiler.sh" "$work/compilers/x86_64-w64-mingw32-clang++"
    local tool
    for tool in "${HOST_TOOLS[@]}"; do
        ln -sfn "/usr/lib/qt5/bin/$tool" "$work/prefix/bin/$tool"
    done
}

configure_qt() {
    link_tools
    rm -rf "$work/build"
    mkdir -p "$work/build/src"
    cd "$work/build"
    local options
    read -ra options -d '' < <(grep -v '^#' "$recipe/options.txt"; printf '\0')
    MAKE=$recipe/make.sh "$work/qtbase/configure" -prefix "$work/prefix" "${options[@]}"
    cd src
    /usr/lib/qt5/bin/qmake -qtconf ../bin/qt.conf -o Makefile "$work/qtbase/src/src.pro"
}

# A linker that was killed leaves half a library with a new date; linking again takes seconds.
compile_qt() {
    cd "$work/build/src"
    find ../lib ../bin ../plugins -type f \( -name '*.dll' -o -name '*.a' \) -delete 2>/dev/null || true
    { nice make -j"$(nproc)" 2>&1 || touch "$work/make-failed"; } | tee -a "$log" |
        awk -v done="$(grep -c '^compiling ' "$log")" -v total="$objects" \
            '/^compiling / { print ++done, total; fflush() }' | show_progress "compiling Qt"
    [ ! -e "$work/make-failed" ] || { rm "$work/make-failed"; return 1; }
}

install_qt() {
    cd "$work/build/src"
    rm -rf "$work/stage"
    make install INSTALL_ROOT="$work/stage"
    local installed=$work/stage$work/prefix tool
    cp -r "$work/qtbase/mkspecs/win32-clang-g++" "$installed/mkspecs/" # the top-level makefile would do it
    for tool in "${HOST_TOOLS[@]}"; do
        ln -sfn "/usr/lib/qt5/bin/$tool" "$installed/bin/$tool"
    done
    mv "$installed" "$CACHE/qt-$(qt_version)-$(tools_key)"
}

# step NAME MESSAGE FUNCTION: does once what is to be done once. No "||" stands behind the function, since bash ignores
# `set -e` within functions that are called in front of one.
current_step=
step() {
    [ ! -e "$work/done-$1" ] || return 0
    current_step=$2
    say "$2"
    if [ "$1" = compile ]; then "$3"; else "$3" >>"$log" 2>&1; fi
    touch "$work/done-$1"
    current_step=
}
tell_failed_step() {
    local code=$?
    [ "$code" != 0 ] && [ "$code" -lt 128 ] && [ -n "$current_step" ] || return 0 # from 128 on: interrupted
    if [ "$(free_megabytes "$work")" -lt 100 ]; then
        die "the disk that holds $CACHE is full; free 1500 MB there, then the same command goes on where it stopped"
    fi
    tail -n 15 "$log" >&2
    die "failed: $current_step (log: $log)"
}
trap tell_failed_step EXIT

QT_GCC_HEADERS=$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)
export QT_GCC_HEADERS PATH="$work/compilers:$PATH"
HOST_TOOLS=(moc rcc uic qlalr tracegen qvkgen qmake)
"$ROOT/tools/setup/fetch-qt.sh"
mkdir -p "$work"
touch "$log"
[ -e "$work/done-compile" ] || say "Qt for Windows is compiled once per machine, about 7 minutes on two cores"
step unpack "unpacking Qt's sources" unpack_source
step configure "configuring Qt (20 seconds)" configure_qt
step compile "compiling Qt" compile_qt
step install "installing Qt" install_qt
rm -rf "$work" "$source"
