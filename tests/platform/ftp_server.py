"""An FTP server over a folder, for the tests. Prints its port, then serves until it is killed.

The names of the files and of the users ask for faults, see below.
"""
import logging
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import DTPHandler, FTPHandler
from pyftpdlib.servers import FTPServer


class Data(DTPHandler):
    stalls = False

    def push_with_producer(self, producer):
        name = producer.file.name
        self.stalls = "stall" in name
        if self.stalls or "cut" in name:
            self.push(producer.more()[:1000])
        else:
            super().push_with_producer(producer)

    def close_when_done(self):
        if not self.stalls:
            super().close_when_done()


class Control(FTPHandler):
    auth_failed_timeout = 0
    dtp_handler = Data
    use_sendfile = False

    def ftp_PASS(self, line):
        if self.username != "silent":
            super().ftp_PASS(line)

    def ftp_PASV(self, line):
        if self.username == "liar":
            self.masquerade_address = "127.0.0.9"
        super().ftp_PASV(line)

    def ftp_STOR(self, file, mode="w"):
        if "full" not in file:
            return super().ftp_STOR(file, mode)
        self.respond("552 Storage exceeded.")


def main():
    logging.basicConfig(level=logging.CRITICAL)
    Control.authorizer = DummyAuthorizer()
    for user in ("target", "liar"):
        Control.authorizer.add_user(user, "right", sys.argv[1], perm="elrw")
    server = FTPServer(("127.0.0.1", 0), Control)
    server.max_cons = int(sys.argv[2])
    print(server.address[1], flush=True)
    server.serve_forever()


main()
