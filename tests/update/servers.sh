#!/usr/bin/env bash
# servers.sh: the whole update, as in update_round_test.sh, from each FTP server of Debian in turn; prints a table. Takes
# about two minutes, the first time needs the network, and is no part of ./test.
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/../../tools/setup/env.sh"
. "$here/ftp_servers.sh"

log=$(mktemp)
trap 'rm -f "$log"' EXIT
failed=0
rows() {
    printf 'Server\tCheck\tDownload, CRC, consent\tUpdate\tNote\n'
    for server in "${FTP_SERVERS[@]}"; do
        outcome=done
        QORSOUND_FTP_SERVER=$server "$here/update_round_test.sh" "$BUILD/windows/dist" \
            "$BUILD/windows/tools/release/qor_release.exe" >"$log" 2>&1 || outcome="FAILED: $(grep -m1 '^error' "$log")"
        time_of() { sed -n "s/^-- $1.*(\([0-9]* ms\))$/\1/p" "$log" | grep . || echo -; }
        printf '%s\t%s\t%s\t%s\t%s\n' "$server" "$(time_of 'the check at the start')" "$(time_of checked)" "$outcome" \
            "$(sed -n 's/^-- note: //p' "$log")"
        [ "$outcome" = done ] || failed=1
    done
    return $failed
}
rows | column -t -s $'\t'
