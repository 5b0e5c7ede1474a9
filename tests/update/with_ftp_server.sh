#!/usr/bin/env bash
# with_ftp_server.sh COMMAND...: runs the command while a real FTP server serves a temporary folder on 127.0.0.1.
# The command finds its port in QOR_FTP_PORT and the folder in QOR_FTP_ROOT. Ends with the command's exit code.
set -euo pipefail

work=$(mktemp -d)
mkdir "$work/root"
/usr/bin/python3 "$(dirname "$0")/ftp_server.py" "$work/root" "$work/port" &
server=$!
trap 'kill "$server" 2>/dev/null || true; rm -rf "$work"' EXIT
trap 'exit 130' INT TERM
until [ -s "$work/port" ]; do
    kill -0 "$server" 2>/dev/null || { echo "the FTP server did not start" >&2; exit 1; }
    sleep 0.05
done
QOR_FTP_PORT=$(cat "$work/port") QOR_FTP_ROOT=$work/root "$@"
