#!/usr/bin/env bash
# fresh.sh SUITE [--keep]: makes a bare Debian of that suite (bookworm, trixie ...) from this machine's mirror, runs
# ./run and ./test of the commit at hand in it as a newcomer would, and prints a table. With --keep the system stays,
# and the next run goes on with it. Needs root and debootstrap. What the commands say is in build/fresh/SUITE.log.
set -euo pipefail
. "$(dirname "$0")/setup/common.sh"

suite=${1:-} keep=${2:-}
[[ $suite =~ ^[a-z]+$ && $keep =~ ^(--keep)?$ ]] || die "usage: tools/fresh.sh SUITE [--keep]"
[ "$(id -u)" = 0 ] || die "only root can make a system"
command -v debootstrap >/dev/null || die "debootstrap is missing; install the package of that name"
system=/var/tmp/qorsound-fresh-$suite
log=$BUILD/fresh/$suite.log
mkdir -p "$BUILD/fresh"
: >"$log"

# isolated COMMAND...: its mounts and all processes that it leaves end with it.
isolated() { unshare --mount --pid --fork --kill-child --mount-proc "$@"; }

make_system() {
    rm -rf --one-file-system "$system"
    need_space "$(dirname "$system")" 8000
    # The mirror of this machine; debootstrap knows one where this is another distribution.
    local mirror proxy=''
    mirror=$(apt-get indextargets --format '$(ORIGIN) $(LABEL) $(REPO_URI)' 'Identifier: Packages' |
        awk '$1 == "Debian" && $2 == "Debian" {print $3; exit}')
    eval "$(apt-config shell proxy Acquire::http::Proxy)"
    http_proxy=${proxy:-${http_proxy:-}} isolated debootstrap --variant=minbase "$suite" "$system" ${mirror:+"$mirror"}
    apt-config dump | grep -i '^Acquire::.*Proxy' >"$system/etc/apt/apt.conf.d/90proxy" || true
    touch "$system/complete"
}

copy_commit() {
    [ -e "$system/root/kit" ] || git clone -q "$ROOT" "$system/root/kit"
    git -C "$system/root/kit" fetch -q "$ROOT" HEAD
    git -C "$system/root/kit" checkout -q --detach FETCH_HEAD
}

# within COMMAND...: in the checkout of the system, as root, without a display.
within() {
    # shellcheck disable=SC2016
    isolated bash -euc '
        mount -t proc proc "$0/proc"
        mount --rbind /sys "$0/sys"
        mount --rbind /dev "$0/dev"
        mount -t tmpfs -o mode=1777 shm "$0/dev/shm"
        exec chroot "$0" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin bash -c "cd && cd kit && exec \"\$@\"" - "$@"
    ' "$system" "$@"
}

table=() failed=0
step() { # step NAME COMMAND...: says how it went; the steps after one that failed are left out
    [ "$failed" = 0 ] || return 0
    local start=$SECONDS code result=done
    say "$suite: $1"
    set +e # behind "||" bash would ignore it within the functions, too
    (set -e; "${@:2}") 2>&1 </dev/null | tee -a "$log"
    code=${PIPESTATUS[0]}
    set -e
    [ "$code" = 0 ] || { failed=1 result="failed with $code"; }
    table+=("$(printf '%-24s %3d min %2d s   %s' "$1" $(((SECONDS - start) / 60)) $(((SECONDS - start) % 60)) "$result")")
}

[ -n "$keep" ] && [ -e "$system/complete" ] || step "bare system" make_system
step "copy of the commit" copy_commit
step "./run" within ./run
step "./test" within ./test
printf '%s\n' "-- $suite, $(git -C "$ROOT" rev-parse --short HEAD), $(nproc) cores:" "${table[@]}"
if [ -n "$keep" ]; then say "the system is in $system"; else rm -rf --one-file-system "$system"; fi
exit "$failed"
