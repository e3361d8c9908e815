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
OTHER_MACRO = b'<macro name="Another editor"><data></data></macro>\n'
NONSENSE = 0x5A  # what is mixed into every byte of it


def tell(*words):
    text = " ".join(str(word) for word in words)
    line = text.encode("utf-8", "backslashreplace").replace(b"\n", b" ")
    os.write(1, line + b"\n")


try:
    from pyftpdlib.authorizers import AuthenticationFailed, DummyAuthorizer
    from pyftpdlib.handlers import FTPHandler, ThrottledDTPHandler
    from pyftpdlib.servers import FTPServer
except ImportError:
    tell("failed", "python3-pyftpdlib is not installed")
    sys.exit(1)


class Faults:
    """What goes wrong on purpose; switched by the parent, read by the service."""

    refuse_login = False
    disk_full = False
    refuse_download = False
    stall_transfer = False
    swap_after_upload = False
    dead_line = False
    cut_transfer = None  # bytes of a transfer after which its line is cut
    flip_byte = None  # the byte of an upload that is stored wrong, from 0
    cut_silent = None  # bytes of an upload that are stored
    slow_transfer = None  # bytes a second
    garble = None  # bytes of a download after which nonsense comes


class Authorizer(DummyAuthorizer):
    def validate_authentication(self, username, password, handler):
        if Faults.refuse_login:
            raise AuthenticationFailed("Login refused.")
        super().validate_authentication(username, password, handler)


class Transfer(ThrottledDTPHandler):
    """A data connection that can be made to go wrong."""

    _full = False

    def __init__(self, sock, cmd_channel):
        self.read_limit = self.write_limit = Faults.slow_transfer or 0
        super().__init__(sock, cmd_channel)

    def _cut(self):
        self._resp = ("426 Connection cut.", logging.debug)
        self.close()

    def _stop(self):
        """From now on nothing that happens on the connection is noticed."""
        self._initialized = True
        self.modify_ioloop_events(0)

    def _throttle_bandwidth(self, len_chunk, max_speed):
        """Rests for as long as the bytes take at that speed, the first ones too."""
        def go_on():
            self.add_channel(events=self.ioloop.READ if self.receive else self.ioloop.WRITE)

        if len_chunk:
            self.del_channel()
            self._cancel_throttler()
            self._throttler = self.ioloop.call_later(len_chunk / max_speed, go_on, _errback=self.handle_error)

    def handle_read(self):
        if Faults.dead_line:
            self._stop()
            return
        if Faults.cut_transfer is not None:
            left = Faults.cut_transfer - self.tot_bytes_received
            if left <= 0:
                self._cut()
                return
            self.ac_in_buffer_size = min(self.ac_in_buffer_size, left)
        super().handle_read()

    handle_read_event = handle_read

    def _stored(self, chunk):
        """What becomes of the bytes of an upload."""
        if self._full:
            return b""
        begin = self.tot_bytes_received - len(chunk)
        if Faults.flip_byte is not None and begin <= Faults.flip_byte < self.tot_bytes_received:
            chunk = bytearray(chunk)
            chunk[Faults.flip_byte - begin] ^= 1
        return chunk if Faults.cut_silent is None else chunk[:max(Faults.cut_silent - begin, 0)]

    def send(self, data):
        if Faults.dead_line:
            self._stop()
            return 0
        if Faults.cut_transfer is not None:
            data = data[:max(Faults.cut_transfer - self.tot_bytes_sent, 0)]
            if not data:
                self._cut()
                return 0
        if Faults.garble is not None:
            good = max(Faults.garble - self.tot_bytes_sent, 0)
            data = data[:good] + bytes(byte ^ NONSENSE for byte in data[good:])
        return super().send(data)

    def enable_receiving(self, type, cmd):
        super().enable_receiving(type, cmd)
        self._full = Faults.disk_full
        self._data_wrapper = self._stored
        if Faults.stall_transfer:
            self._stop()

    def handle_close(self):
        if self._full and not self._closed:
            self._resp = ("552 No space left on the panel.", logging.debug)
            self.close()
        else:
            super().handle_close()

    def push_with_producer(self, producer):
        if Faults.stall_transfer:
            self._stop()
        else:
            super().push_with_producer(producer)


class Session(FTPHandler):
    dtp_handler = Transfer
    banner = "panel ready."
    auth_failed_timeout = 0
    use_sendfile = False  # its bytes would pass by the faults
    _dead = False  # its line is gone, though nobody has been told

    def handle(self):
        self._dead = Faults.dead_line
        if not self._dead:
            super().handle()

    def found_terminator(self):
        if self._dead and not Faults.dead_line:
            self.close()
            return
        self._dead = Faults.dead_line
        if self._dead:
            self._in_buffer, self._in_buffer_len = [], 0
        else:
            super().found_terminator()

    def ftp_RETR(self, file):
        if Faults.refuse_download:
            self.respond("451 Not to be read.")
            return None
        return super().ftp_RETR(file)

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
        if Faults.swap_after_upload:
            with open(file, "wb") as swapped:
                swapped.write(OTHER_MACRO)
            self._told("swapped", file)

    def on_incomplete_file_sent(self, file):
        self._told("broke off sending", file)

    def on_incomplete_file_received(self, file):
        self._told("broke off receiving", file)


def obey(line):
    """Applies one command; False when it is none."""
    name, _, value = line.strip().partition(" ")
    fault = name.replace("-", "_")
    if value in ("on", "off") and isinstance(getattr(Faults, fault, None), bool):
        setattr(Faults, fault, value == "on")
    elif value == "off" or value.isdigit():
        setattr(Faults, fault, None if value == "off" else int(value))
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
