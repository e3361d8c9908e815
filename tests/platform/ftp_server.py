"""An FTP server over a folder, for the tests. Prints its port, then serves until its input ends.

The names of the files and of the users ask for faults, see below.
"""
import logging
import os
import sys
import threading

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import DTPHandler, FTPHandler
from pyftpdlib.servers import FTPServer


class Data(DTPHandler):
    stalls, drips = False, b""

    def push_with_producer(self, producer):
        name = producer.file.name
        self.stalls = "stall" in name
        self.drips = producer.more() if "drip" in name else b""
        if self.drips:
            self.drip()
            return
        if self.stalls or "cut" in name:
            self.push(producer.more()[:1000])
        else:
            super().push_with_producer(producer)

    def drip(self):
        """A byte a second."""
        if self._closed:
            return
        self.push(self.drips[:1])
        self.drips = self.drips[1:]
        self.ioloop.call_later(1, self.drip)

    def close_when_done(self):
        if not self.stalls and not self.drips:
            super().close_when_done()


class Control(FTPHandler):
    auth_failed_timeout = 0
    dtp_handler = Data
    use_sendfile = False
    count, transfers = 0, 0

    def on_connect(self):
        """A byte a connection, in a file."""
        Control.count += 1
        with open(sys.argv[1] + "/connections", "w") as file:
            file.write("c" * Control.count)

    def ftp_PASS(self, line):
        if self.username != "silent":
            super().ftp_PASS(line)

    def ftp_PASV(self, line):
        if self.username == "liar":
            self.masquerade_address = "127.0.0.9"
        self.transfers += 1
        if self.username == "brief" and self.transfers > 1:
            self.close()
        elif self.username == "idle" and self.transfers > 1:
            self.respond("421 Control connection timed out.")
            self.close_when_done()
        else:
            super().ftp_PASV(line)

    def ftp_SIZE(self, path):
        if self.username == "plain":
            self.respond("500 Unknown command.")
        elif "more" in path or "fewer" in path:
            self.respond("213 %d" % (6000 if "more" in path else 40))
        else:
            super().ftp_SIZE(path)

    def ftp_RETR(self, file):
        if "broken" not in file:
            return super().ftp_RETR(file)
        self.respond("451 Local error.")

    def ftp_STOR(self, file, mode="w"):
        if "broken" in file:
            self.respond("451 Local error.")
        elif "away" in file:
            self.respond("421 Service not available.")
        elif "full" in file:
            self.respond("552 Storage exceeded.")
        else:
            return super().ftp_STOR(file, mode)


def main():
    logging.basicConfig(level=logging.CRITICAL)
    Control.authorizer = DummyAuthorizer()
    for user in ("target", "liar", "plain", "brief", "idle"):
        Control.authorizer.add_user(user, "right", sys.argv[1], perm="elrw")
    server = FTPServer(("127.0.0.1", 0), Control)
    server.max_cons = int(sys.argv[2])
    print(server.address[1], flush=True)
    threading.Thread(target=lambda: (sys.stdin.read(), os._exit(0)), daemon=True).start()
    server.serve_forever()


main()
