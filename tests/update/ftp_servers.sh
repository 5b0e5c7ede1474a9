# shellcheck shell=bash
# FTP servers of Debian on 127.0.0.1, run without root rights where they let themselves, out of unpacked packages: nothing
# is installed and no service is started. Sourced after panel_session.sh.

FTP_SERVERS=(pyftpdlib vsftpd proftpd pure-ftpd)
ftp_packages=$CACHE/ftp-servers

# unpack_ftp_servers: fetches the servers and the libraries that they need, once.
unpack_ftp_servers() {
    [ ! -e "$ftp_packages/complete" ] || return 0
    say "fetching vsftpd, proftpd and pure-ftpd (4 MB)"
    mkdir -p "$ftp_packages"
    (cd "$ftp_packages" && apt-get -qq download vsftpd proftpd-core pure-ftpd libwrap0 libcap2 libhiredis0.14 \
        libmemcached11 libmemcachedutil2 libhashkit2 libpcre2-posix3 libsodium23 libpam0g) >/dev/null 2>&1 ||
        die "the packages of the FTP servers cannot be fetched"
    local package
    for package in "$ftp_packages"/*.deb; do
        dpkg-deb -x "$package" "$ftp_packages"
    done
    touch "$ftp_packages/complete"
}

# start_ftp_server NAME: serves the folder $FTP_ROOT, which it makes; sets FTP_PORT, FTP_USER, FTP_PASSWORD, FTP_NOTE.
start_ftp_server() {
    FTP_USER=maker FTP_PASSWORD=secret FTP_NOTE=
    ftp_work=$(mktemp -d /tmp/qor-ftp-XXXXXX) # where a server without rights may go
    leftovers+=("$ftp_work")
    FTP_ROOT=$ftp_work/root
    mkdir "$FTP_ROOT" "$ftp_work/run"
    FTP_PORT=$(/usr/bin/python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
    local user unprivileged=()
    user=$(id -un)
    if [ "$user" = root ]; then
        user=nobody
        unprivileged=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
        chmod a+rx "$ftp_work"
    fi
    local binaries=$ftp_packages/usr/sbin libraries=$ftp_packages/usr/lib/x86_64-linux-gnu:$ftp_packages/lib/x86_64-linux-gnu
    [ "$1" = pyftpdlib ] || unpack_ftp_servers
    case $1 in
    pyftpdlib)
        /usr/bin/python3 "$(dirname "${BASH_SOURCE[0]}")/ftp_server.py" "$FTP_ROOT" "$FTP_PORT" &
        ;;
    vsftpd)
        FTP_USER=anonymous FTP_PASSWORD=panel
        # As in packaging/README.md, but for who runs it.
        sed -n '/^listen=YES/,/^```/{/^```/d;p}' "$ROOT/packaging/README.md" >"$ftp_work/run/vsftpd.conf"
        sed -i "s|^anon_root=.*|anon_root=$FTP_ROOT|; s|^listen_port=.*|listen_port=$FTP_PORT|" "$ftp_work/run/vsftpd.conf"
        printf '%s\n' background=NO listen_address=127.0.0.1 run_as_launching_user=YES ftp_username=daemon \
            seccomp_sandbox=NO isolate_network=NO isolate=NO >>"$ftp_work/run/vsftpd.conf"
        chown -R "$user" "$ftp_work/run"
        LD_LIBRARY_PATH=$libraries "${unprivileged[@]}" "$binaries/vsftpd" "$ftp_work/run/vsftpd.conf" &
        ;;
    proftpd)
        printf '%s\n' 'ServerType standalone' 'UseIPv6 off' 'DefaultAddress 127.0.0.1' "Port $FTP_PORT" \
            "PidFile $ftp_work/run/pid" "ScoreboardFile $ftp_work/run/scoreboard" 'DelayTable none' 'SystemLog none' \
            'WtmpLog off' 'TransferLog none' 'AuthPAM off' 'AuthOrder mod_auth_file.c' \
            "AuthUserFile $ftp_work/run/passwd" 'RequireValidShell off' 'DefaultTransferMode binary' \
            "User $user" "Group $(id -gn "$user")" >"$ftp_work/run/proftpd.conf"
        echo "maker:$(openssl passwd -6 secret):$(id -u "$user"):$(id -g "$user")::$FTP_ROOT:/bin/sh" >"$ftp_work/run/passwd"
        chmod 600 "$ftp_work/run/passwd"
        chown -R "$user" "$ftp_work/run"
        LD_LIBRARY_PATH=$libraries "${unprivileged[@]}" "$binaries/proftpd" -n -q -c "$ftp_work/run/proftpd.conf" \
            >/dev/null 2>&1 &
        FTP_NOTE='"DefaultTransferMode binary"'
        ;;
    pure-ftpd)
        [ "$(id -u)" = 0 ] || { FTP_NOTE='not tried: does not run without root rights'; return 1; }
        echo "maker:$(openssl passwd -6 secret):65534:65534::$FTP_ROOT/./::::::::::::" >"$ftp_work/run/passwd"
        LD_LIBRARY_PATH=$libraries "$ftp_packages/usr/bin/pure-pw" mkdb "$ftp_work/run/pdb" -f "$ftp_work/run/passwd"
        # It takes no file name with a backslash, so a relay turns them round.
        LD_LIBRARY_PATH=$libraries "$binaries/pure-ftpd" -S "127.0.0.1,$((FTP_PORT + 1))" -l "puredb:$ftp_work/run/pdb" \
            -H -u 1 -g "$ftp_work/run/pid" &
        started+=($!)
        /usr/bin/python3 "$(dirname "${BASH_SOURCE[0]}")/slash_relay.py" "$FTP_PORT" "$((FTP_PORT + 1))" &
        FTP_NOTE='refuses "\" in file names; behind a relay that turns it into "/"'
        ;;
    esac
    started+=($!)
    wait_for 60 ftp_answers || die "$1 did not start"
}
ftp_answers() { (exec 3<>"/dev/tcp/127.0.0.1/$FTP_PORT" && read -r -t 5 <&3) 2>/dev/null; }

# serve FILE FOLDER: under both readings of FOLDER\FILE, as a name and as a path.
serve() {
    mkdir -p "$FTP_ROOT/$2"
    cp "$1" "$FTP_ROOT/$2\\$(basename "$1")"
    cp "$1" "$FTP_ROOT/$2/"
    chmod -R a+rX "$FTP_ROOT"
}
