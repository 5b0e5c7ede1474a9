#!/usr/bin/env bash
# Installs the Debian packages that are missing. Asks the package manager only for those. --missing prints them.
set -euo pipefail
. "$(dirname "$0")/common.sh"

mapfile -t wanted < <(grep -v -e '^#' -e '^$' "$ROOT/tools/setup/packages.txt" | sort -u)
mapfile -t missing < <(comm -23 <(printf '%s\n' "${wanted[@]}") \
    <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null | sed -n 's/^installed //p' | sort -u))
[ "${1:-}" != --missing ] || { echo "${missing[*]}"; exit 0; }
[ ${#missing[@]} -gt 0 ] || exit 0

command -v apt-get >/dev/null || die "this machine has no apt; Debian or Ubuntu is needed, with Qt 5.15, mingw-w64 and Wine"
[ "$(uname -m)" = x86_64 ] || die "this machine is no 64-bit PC, which Wine needs to run the panel"
as_root=()
if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || die "packages are missing and there is no sudo; as root: apt-get install ${missing[*]}"
    as_root=(sudo)
fi
need_space /var/cache/apt 2500
say "installing ${#missing[@]} Debian packages (1-3 minutes): ${missing[*]}"
log=$(mktemp)
apt_step() { # No package may ask a question or start a service of its own.
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq "$@" >>"$log" 2>&1 </dev/null
}
complaints() { grep -E '^(E: |W: Failed to fetch)' "$log" | sort -u | head -n 8 || true; }

apt_step update || true # one of several sources may be out of reach; the installation decides
out_of_reach=$(complaints)
if ! apt_step install -y --no-install-recommends -o Dpkg::Use-Pty=0 "${missing[@]}"; then
    unknown=$(sed -nE "s/^E: Unable to locate package //p; s/^E: Package '(.*)' has no installation candidate/\1/p" "$log")
    [ -z "$unknown" ] || [ -n "$out_of_reach" ] ||
        die "needed is a Debian or Ubuntu with Qt 5.15, mingw-w64 and Wine; apt does not know" $unknown
    printf '%s\n' "${out_of_reach:-$(complaints)}" >&2
    die "apt-get could not install the packages; the log is $log"
fi
rm -f "$log"
