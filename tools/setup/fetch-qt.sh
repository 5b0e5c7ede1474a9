#!/usr/bin/env bash
# Downloads the Debian source package of Qt into the work folder of its build, unless Qt or its source is there.
# Needs nothing but apt, so that it can run while the packages are installed.
set -euo pipefail
. "$(dirname "$0")/common.sh"
work=$(qt_work_dir)
[ ! -e "$(qt_dir)" ] && [ ! -e "$work/fetched" ] || exit 0

log=$work/fetch.log
mkdir -p "$work/lists/partial" "$work/archives/partial" "$work/source"
cd "$work/source"

# Source entries are the machine's own, with the type changed to deb-src, in a private list.
list=$work/private.sources
for file in /etc/apt/sources.list.d/*.sources; do
    [ ! -e "$file" ] || { sed -E 's/^Types:.*/Types: deb-src/' "$file"; echo; }
done >"$list"
if [ ! -s "$list" ]; then
    list=$work/private.list
    cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null | sed -nE 's/^deb (.*)/deb-src \1/p' >"$list" || true
fi

private_apt() { # apt with that list of sources only
    apt-get -q -o Dir::Etc::sourcelist="$list" -o Dir::Etc::sourceparts=- -o Dir::State::lists="$work/lists" \
        -o Dir::Cache="$work" -o APT::Sandbox::User=root -o APT::Get::List-Cleanup=0 "$@" >>"$log" 2>&1
}
private_apt update || true # one of several sources may be out of reach; the download decides
private_apt --download-only source qtbase-opensource-src ||
    die "cannot download Qt's source package (no network?); the log is $log"
touch "$work/fetched"
