#!/usr/bin/python3
"""slash_relay.py PORT SERVER_PORT: relays control connections on 127.0.0.1 and turns backslashes of commands round."""
import socket
import sys
import threading


def relay(source, target, change):
    while data := source.recv(4096):
        target.sendall(change(data))
    target.shutdown(socket.SHUT_WR)


listener = socket.create_server(("127.0.0.1", int(sys.argv[1])))
while True:
    client = listener.accept()[0]
    server = socket.create_connection(("127.0.0.1", int(sys.argv[2])))
    threading.Thread(target=relay, args=(server, client, bytes), daemon=True).start()
    threading.Thread(target=relay, args=(client, server, lambda data: data.replace(b"\\", b"/")), daemon=True).start()
