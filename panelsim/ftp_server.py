"""The FTP service of a simulated panel.

Runs as a child of the simulator: commands come in on the standard input, a line each, and are answered with "ok"
or "what?"; what happens is told on the standard output. It ends with its input, so it never outlives its parent.
The whole panel tree is the root folder of its one user, whom no account of this machine stands behind.
"""
import logging
import os
import signal
import sys
import threading

USER, SECRET = "target", "vintrosa"


def tell(*words):
    text = " ".join(str(word) for word in words)
    line = text.encode("utf-8", "backslashreplace").replace(b"\n", b" ")
    os.write(1, line + b"\n")


try:
    from pyftpdlib.authorizers import AuthenticationFailed, DummyAuthorizer
    from pyftpdlib.handlers import DTPHandler, FTPHandler
    from pyftpdlib.servers import FTPServer
except ImportError:
    tell("failed", "python3-pyftpdlib is not installed")
    sys.exit(1)


class Faults:
    """What goes wrong on purpose; switched by the parent, read by the service."""

    refuse_login = False
    disk_full = False
    stall = False
    cut = None  # bytes of a transfer after which its line is cut


class Authorizer(DummyAuthorizer):
    def validate_authentication(self, username, password, handler):
        if Faults.refuse_login:
            raise AuthenticationFailed("Login refused.")
        super().validate_authentication(username, password, handler)


class Transfer(DTPHandler):
    """A data connection that can be made to stall, to break or to find the disk full."""

    _full = False

    def _cut(self):
        self._resp = ("426 Connection cut.", logging.debug)
        self.close()

    def handle_read(self):
        if Faults.cut is not None:
            left = Faults.cut - self.tot_bytes_received
            if left <= 0:
                self._cut()
                return
            self.ac_in_buffer_size = min(self.ac_in_buffer_size, left)
        super().handle_read()

    handle_read_event = handle_read

    def send(self, data):
        if Faults.cut is not None:
            data = data[:max(Faults.cut - self.tot_bytes_sent, 0)]
            if not data:
                self._cut()
                return 0
        return super().send(data)

    def enable_receiving(self, type, cmd):
        super().enable_receiving(type, cmd)
        self._full = Faults.disk_full
        if self._full:
            self._data_wrapper = lambda chunk: b""
        if Faults.stall:
            self.modify_ioloop_events(0)

    def handle_close(self):
        if self._full and not self._closed:
            self._resp = ("552 No space left on the panel.", logging.debug)
            self.close()
        else:
            super().handle_close()

    def push_with_producer(self, producer):
        if Faults.stall:
            self._initialized = True
            self.modify_ioloop_events(0)
        else:
            super().push_with_producer(producer)


class Session(FTPHandler):
    dtp_handler = Transfer
    banner = "panel ready."
    auth_failed_timeout = 0
    use_sendfile = False  # its bytes would pass by the faults

    def _told(self, what, path):
        size = os.path.getsize(path) if os.path.exists(path) else 0
        # A client that is gone at once takes the session with it before its transfer is told of.
        name = self.fs.fs2ftp(path) if self.fs else os.path.basename(path)
        tell("event", what, name, size, "bytes")

    def on_login(self, username):
        tell("event", "login", username)

    def on_login_failed(self, username, password):
        tell("event", "refused login of", username)

    def on_file_sent(self, file):
        self._told("sent", file)

    def on_file_received(self, file):
        self._told("received", file)

    def on_incomplete_file_sent(self, file):
        self._told("broke off sending", file)

    def on_incomplete_file_received(self, file):
        self._told("broke off receiving", file)


def obey(line):
    """Applies one command; False when it is none."""
    name, _, value = line.strip().partition(" ")
    switches = {"refuse-login": "refuse_login", "disk-full": "disk_full", "stall-transfer": "stall"}
    if name in switches and value in ("on", "off"):
        setattr(Faults, switches[name], value == "on")
    elif name == "cut-transfer" and (value == "off" or value.isdigit()):
        Faults.cut = None if value == "off" else int(value)
    else:
        return False
    return True


def listen_to_parent():
    for line in sys.stdin:
        tell("ok" if obey(line) else "what?")
    os._exit(0)


def main(address, port, root):
    signal.signal(signal.SIGINT, signal.SIG_IGN)  # the parent decides when to end
    logging.disable(logging.CRITICAL)
    Session.authorizer = Authorizer()
    Session.authorizer.add_user(USER, SECRET, root, perm="elradfw")
    try:
        server = FTPServer((address, int(port)), Session)
    except OSError as error:
        tell("failed", error.strerror or error)
        return 1
    tell("ready", server.address[1])
    threading.Thread(target=listen_to_parent, daemon=True).start()
    server.serve_forever(handle_exit=False)
    return 0


sys.exit(main(*sys.argv[1:]))
