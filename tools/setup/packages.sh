#!/usr/bin/env bash
# Installs the Debian packages that are missing. Asks the package manager only for those. --missing prints them.
set -euo pipefail
. "$(dirname "$0")/common.sh"

mapfile -t wanted < <(grep -v -e '^#' -e '^$' "$ROOT/tools/setup/packages.txt" | sort -u)
mapfile -t missing < <(comm -23 <(printf '%s\n' "${wanted[@]}") \
    <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null | sed -n 's/^installed //p' | sort -u))
[ "${1:-}" != --missing ] || { echo "${missing[*]}"; exit 0; }
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || die "packages are missing and there is no sudo; as root: apt-get install ${missing[*]}"
    as_root=(sudo)
fi
need_space /var/cache/apt 2500
say "installing ${#missing[@]} Debian packages (1-3 minutes): ${missing[*]}"
log=$(mktemp)
apt_step() { # No package may ask a question or start a service of its own.
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq "$@" >"$log" 2>&1 </dev/null ||
        { tail -n 5 "$log" >&2; die "apt-get $1 failed (no network?); the log is $log"; }
}
apt_step update
apt_step install -y --no-install-recommends -o Dpkg::Use-Pty=0 "${missing[@]}"
rm -f "$log"
