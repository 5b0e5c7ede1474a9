#!/usr/bin/python3
"""ftp_server.py ROOT PORT_FILE: an FTP server on 127.0.0.1 for tests, user "maker", password "secret".

It takes a free port and writes its number into PORT_FILE. Clients may name files with backslashes, as on the maker's
Windows server, and may ask for SIZE before TYPE I.
"""
import logging
import os
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer


class Handler(FTPHandler):
    auth_failed_timeout = 0

    def pre_process_command(self, line, cmd, arg):
        if cmd != "PASS":
            arg = arg.replace("\\", "/")
        super().pre_process_command(line, cmd, arg)

    def ftp_SIZE(self, path):
        saved, self._current_type = self._current_type, "i"
        try:
            return super().ftp_SIZE(path)
        finally:
            self._current_type = saved


def main():
    root, port_file = sys.argv[1:]
    logging.basicConfig(level=logging.ERROR)
    authorizer = DummyAuthorizer()
    authorizer.add_user("maker", "secret", root, perm="elrw")
    Handler.authorizer = authorizer
    server = FTPServer(("127.0.0.1", 0), Handler)
    with open(port_file + ".new", "w") as file:
        file.write(str(server.address[1]))
    os.rename(port_file + ".new", port_file)
    server.serve_forever()


main()
