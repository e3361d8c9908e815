"""What system calls a program makes under a folder, recorded by strace."""
import glob
import os
import re
import subprocess
import tempfile
import time

from disk import File, Folder

CALLS = ("open,openat,creat,mkdir,mkdirat,rename,renameat,renameat2,unlink,unlinkat,rmdir,link,linkat,symlink,symlinkat,"
         "truncate,ftruncate,write,writev,pwrite64,pwritev,lseek,sendfile,copy_file_range,fallocate,fsync,fdatasync,chmod,"
         "fchmod,fchmodat,fchown,close,dup,dup2,dup3,fcntl,flock,read,pread64,getdents64,stat,lstat,newfstatat,fstat,"
         "statx,statfs,readlink,access,faccessat2,clone3")
LINE = re.compile(r"^(\d+) +(\w+)\((.*?)\) += (-?\d+|\?)(<[^>]*>(?:\(deleted\))?)? ?(E[A-Z]+)?(.*)$")
TEXT = re.compile(r'"((?:\\x[0-9a-f]{2})*)"(\.\.\.)?')
NUMBER = re.compile(r"^(?:(\d+)|AT_FDCWD)<((?:\\x[0-9a-f]{2})*)>")


class Call:
    """One call: its name, its arguments as written, the texts and bytes among them, and what came of it."""

    def __init__(self, thread, name, arguments, result, error, injected):
        self.thread, self.name, self.arguments, self.error, self.injected = thread, name, arguments, error, injected
        self.result = int(result) if result != "?" else -1
        self.texts = [bytes.fromhex(text.replace("\\x", "")) for text, _ in TEXT.findall(arguments)]
        number = NUMBER.match(arguments)
        self.file = int(number[1]) if number and number[1] else None
        self.at = os.fsdecode(bytes.fromhex(number[2].replace("\\x", ""))) if number else ""

    def paths(self):
        """The paths that it names, whole."""
        if self.name in ("write", "pwrite64", "writev", "pwritev", "read", "pread64", "getdents64") or not self.texts:
            return [self.at] if self.at else []
        return [os.path.normpath(os.path.join(self.at, os.fsdecode(text))) for text in self.texts]

    def numbers(self):
        """The plain numbers behind the first argument."""
        words = TEXT.sub('""', self.arguments).split(", ")[1:]
        return [_number(word) for word in words if re.fullmatch(r"0x[0-9a-f]+|-?\d+", word)]


def _number(word):
    return int(word, 8) if re.fullmatch(r"0[0-7]+", word) else int(word, 0)


def run_recorded(command, environment, inject=None, timeout=120):
    """Runs a command; what it answered, and its calls."""
    with tempfile.NamedTemporaryFile("r", suffix=".strace") as log:
        done = subprocess.run([*_recorder(log, inject and [inject]), *command], env=environment, capture_output=True,
                              timeout=timeout, check=False)
        return done, list(parsed(log))


class Recorded:
    """The calls of a program that runs, from now on until they are asked for."""

    def __init__(self, process, inject=()):
        self.log = tempfile.NamedTemporaryFile("r", suffix=".strace")
        self.recorder = subprocess.Popen([*_recorder(self.log, inject), "-p", str(process)], stderr=subprocess.DEVNULL)
        while not all(map(_is_traced, glob.glob(f"/proc/{process}/task/*/status"))):
            assert self.recorder.poll() is None, "strace may not trace a program that runs"
            time.sleep(0.002)

    def calls(self):
        self.recorder.terminate()  # which lets the program go on alone
        self.recorder.wait()
        with self.log:
            return list(parsed(self.log))


def _recorder(log, inject):
    words = ["strace", "-f", "-y", "-xx", "-qq", "-s", "67108864", "-o", log.name, "-e", "signal=none",
             "-e", f"trace={CALLS}"]
    return words + [word for one in inject or () for word in ("-e", "inject=" + one)]


def _is_traced(status):
    with open(status) as file:
        return "TracerPid:\t0\n" not in file.read()


def may_trace():
    """Whether this machine lets a program be traced, as some sandboxes do not."""
    try:
        return subprocess.run(["strace", "-o", os.devnull, "true"], capture_output=True, check=False).returncode == 0
    except FileNotFoundError:
        return False


def parsed(lines):
    waiting = {}
    for line in lines:
        line = line.rstrip("\n")
        thread = line.split(" ", 1)[0]
        if line.endswith("<unfinished ...>"):
            waiting[thread] = line[:-len("<unfinished ...>")].rstrip()
            continue
        resumed = re.match(r"^\d+ +<\.\.\. \w+ resumed>(.*)$", line)
        if resumed:
            line = waiting.pop(thread) + resumed[1]
        found = LINE.match(line)
        if found:
            yield Call(found[1], found[2], found[3], found[4], found[6], "INJECTED" in found[7])


class Replay:
    """Carries calls out on a disk. Files elsewhere do not matter."""

    def __init__(self, disk, folder):
        self.disk, self.folder, self.files = disk, os.path.realpath(folder), {}

    def inside(self, path):
        return path == self.folder or path.startswith(self.folder + "/")

    def parts(self, path):
        relative = os.path.relpath(path, self.folder)
        return [] if relative == "." else relative.split("/")

    def place(self, path):
        parts = self.parts(path)
        return self.disk.find(parts[:-1]), parts[-1]

    def act(self, call):
        """True when it has changed what a power cut may leave."""
        acts = getattr(self, "_" + call.name, None)
        if acts is None or call.result < 0:
            return False
        return bool(acts(call))

    def _openat(self, call):
        path = call.paths()[0]
        if not self.inside(path):
            return False
        node, created = self.disk.find(self.parts(path)), False
        if node is None and "O_CREAT" in call.arguments:
            node, created = File(mode=call.numbers()[-1] & ~_umask()), True
            folder, name = self.place(path)
            folder.change({name: node})
        if isinstance(node, File) and "O_TRUNC" in call.arguments and node.now()[0]:
            node.cut(0)
            created = True
        self.files[call.result] = [node, 0, "O_APPEND" in call.arguments]
        return created

    _open = _openat

    def _close(self, call):
        self.files.pop(call.file, None)

    def _fcntl(self, call):
        if "F_DUPFD" in call.arguments and call.file in self.files:
            self.files[call.result] = self.files[call.file]

    def _lseek(self, call):
        if call.file in self.files:
            self.files[call.file][1] = call.result

    def _read(self, call):
        if call.file in self.files:
            self.files[call.file][1] += call.result

    def _write(self, call):
        if call.file not in self.files:
            return False
        held = self.files[call.file]
        at = len(held[0].now()[0]) if held[2] else held[1]
        held[0].write(at, call.texts[0][:call.result])
        held[1] = at + call.result
        return True

    def _pwrite64(self, call):
        if call.file not in self.files:
            return False
        self.files[call.file][0].write(call.numbers()[-1], call.texts[0][:call.result])
        return True

    def _ftruncate(self, call):
        if call.file not in self.files:
            return False
        self.files[call.file][0].cut(call.numbers()[-1])
        return True

    def _fchmod(self, call):
        if call.file not in self.files:
            return False
        self.files[call.file][0].set_mode(call.numbers()[-1] & 0o777)
        return True

    def _fsync(self, call):
        if call.file in self.files and not call.injected:
            self.files[call.file][0].flush()
        return False

    _fdatasync = _fsync

    def _mkdir(self, call):
        path = call.paths()[-1]
        if not self.inside(path):
            return False
        folder, name = self.place(path)
        folder.change({name: Folder()})
        return True

    _mkdirat = _mkdir

    def _rename(self, call):
        source, target = call.paths()
        if not self.inside(source):
            return False
        (folder, old), (other, new) = self.place(source), self.place(target)
        assert folder is other, "a rename from folder to folder"
        folder.change({old: None, new: folder.now()[old]})
        return True

    def _unlink(self, call):
        path = call.paths()[-1]
        if not self.inside(path):
            return False
        folder, name = self.place(path)
        folder.change({name: None})
        return True

    _unlinkat = _rmdir = _unlink

    def _unknown(self, call):
        paths = call.paths()
        assert not any(self.inside(path) for path in paths), f"nothing is known of {call.name}"

    _creat = _renameat = _renameat2 = _link = _linkat = _symlink = _symlinkat = _truncate = _writev = _pwritev = _unknown
    _sendfile = _copy_file_range = _fallocate = _chmod = _fchmodat = _dup = _dup2 = _dup3 = _unknown


def _umask():
    mask = os.umask(0)
    os.umask(mask)
    return mask
