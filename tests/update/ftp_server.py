#!/usr/bin/python3
"""ftp_server.py ROOT PORT: an FTP server on 127.0.0.1 for tests, user "maker", password "secret".

Clients may ask for SIZE before TYPE I.
"""
import logging
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer


class Handler(FTPHandler):
    auth_failed_timeout = 0

    def ftp_SIZE(self, path):
        saved, self._current_type = self._current_type, "i"
        try:
            return super().ftp_SIZE(path)
        finally:
            self._current_type = saved


logging.basicConfig(level=logging.ERROR)
Handler.authorizer = DummyAuthorizer()
Handler.authorizer.add_user("maker", "secret", sys.argv[1], perm="elr")
FTPServer(("127.0.0.1", int(sys.argv[2])), Handler).serve_forever()
