#!/usr/bin/env bash
# Downloads the Debian source package of Qt, unless Qt or its unpacked source is there. Needs nothing but apt, so that it
# can run while the packages are installed.
set -euo pipefail
. "$(dirname "$0")/common.sh"
source=$(qt_source_dir)
[ ! -e "$source/fetched" ] && [ ! -e "$(qt_work_dir)/done-unpack" ] && [ ! -e "$(qt_dir)" ] || exit 0

log=$source/fetch.log
mkdir -p "$source/lists/partial" "$source/archives/partial" "$source/sources.d"
cd "$source"
rm -f ./*.dsc "$log" # of another version, if an earlier download was interrupted

# Source entries are the machine's own, with the type changed to deb-src, in a private list.
for file in /etc/apt/sources.list.d/*.sources; do
    [ ! -e "$file" ] || { sed -E 's/^Types:.*/Types: deb-src/' "$file"; echo; }
done >sources.d/private.sources
cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
    sed -nE 's/^deb (.*)/deb-src \1/p' >sources.d/private.list || true

private_apt() { # apt with these sources only
    apt-get -q -o Dir::Etc::sourcelist=- -o Dir::Etc::sourceparts="$source/sources.d" -o Dir::State::lists="$source/lists" \
        -o Dir::Cache="$source" -o APT::Sandbox::User=root -o APT::Get::List-Cleanup=0 "$@" >>"$log" 2>&1
}
private_apt update || true # one of several sources may be out of reach; the download decides
private_apt --download-only source qtbase-opensource-src || {
    grep -E '^(E: |W: Failed to fetch)' "$log" | sort -u | head -n 8 >&2 || true
    die "apt-get could not download the source package of Qt 5.15, qtbase-opensource-src; the log is $log"
}
touch fetched
