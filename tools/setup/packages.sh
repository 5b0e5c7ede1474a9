#!/usr/bin/env bash
# Installs the Debian packages that are missing. Asks the package manager only for those.
set -euo pipefail
. "$(dirname "$0")/common.sh"

mapfile -t wanted < <(grep -v -e '^#' -e '^$' "$ROOT/tools/setup/packages.txt" | sort -u)
mapfile -t missing < <(comm -23 <(printf '%s\n' "${wanted[@]}") \
    <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null | sed -n 's/^installed //p' | sort -u))
[ ${#missing[@]} -gt 0 ] || exit 0

say "installing ${#missing[@]} Debian packages (1-3 minutes): ${missing[*]}"
need_space /var/cache/apt 2500
as_root=()
[ "$(id -u)" = 0 ] || as_root=(sudo)
# No package may ask a question or start a service of its own.
export DEBIAN_FRONTEND=noninteractive
apt_log=$(mktemp)
apt_step() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq "$@" >"$apt_log" 2>&1 ||
        { tail -n 5 "$apt_log" >&2; die "apt-get $1 failed; the log is $apt_log"; }
}
apt_step update
apt_step install -y --no-install-recommends -o Dpkg::Use-Pty=0 "${missing[@]}"
rm -f "$apt_log"
