"""The write operations whose system calls are tried, on a small site, and what is asked afterwards."""
import json
import os
import resource
import shutil
import signal
import socket
import subprocess
import tempfile
import threading
import time

import calls
import disk

MACROS = "c:\\programme\\RV48\\appli\\Show\\CP1\\macroWP1\\"
OTHERS = "c:\\programme\\RV48\\appli\\Show\\CP1\\macroWP2\\"
KEY = "c:\\programme\\RV48\\appli\\Show\\CP7\\upk\\key03.upk"
OWN = "c:\\programme\\RV48\\bin\\MacroFid\\"
SNAPSHOT = "c:\\programme\\RV48\\appli\\Show\\taken.zip"
NEXT = "macro800.mac"
MOST_TOLD = 5  # of what is wrong with one operation, unless TESSALY_PROOF_ALL asks for all
SKIPPED = 77  # to the tests
DONE_TOLD = "power cut", "is not known", "was written"  # a failure with these words has been done all the same
NOT_DONE = "NOT ", "could not be written", "cannot: "  # as the window says it
PANEL_MACRO = "flash/data/PANEL/macro/workplace1/macro001.mac"
FUNCTIONS = b'''<mfd><fidsegment_indexed name="me" fidseg="ME" displayname="ME " min="1" max="3" offset="0"/>
<fid name="$me.KEY1.CLIP.SET" sid="$me.KEY1.CLIP" group="$me.KEY1.KEY" description="$me Key 1 Clip Set">
<float_parameter name="VALUE" type="percent" min="0" max="1" minDisp="0" maxDisp="100"/></fid></mfd>
'''


def macro(name, commands=3, value="0.5"):
    command = ('        <cmd fid="QMF1.ME1.KEY1.CLIP.SET" workplace="1" group="0" module="0" widget="0">\n'
               f'            <param name="VALUE" value="{value}" />\n        </cmd>\n')
    return f'<macro name="{name}">\n    <data>\n{command * commands}    </data>\n</macro>\n'.encode()


def site_tree():
    files = {OWN + "emptyMacro.mac": b'<macro name=""><data></data></macro>\n',
             OWN + "TarrowMFDIfc.xml": FUNCTIONS, OWN + "CorvaneXLPanel.xml": b"<mfd></mfd>",
             folder_of(SNAPSHOT) + "devices.ini": b'[Devices]\nDev1=CP1 "Desk" 10.0.0.1\nDev2=CP7 "Side" 10.0.0.2\n',
             folder_of(KEY).replace("upk\\", "") + "appli_cp.ini": b"[Application]\nName=Show\n",
             MACROS.replace("macroWP1", "assign") + "contents.cnt": b"#CNT\nPanel=CP1\n",
             KEY: b"#UPK\nBeginHeader\nFile=key03.upk\nName=MK04\nVersion=1.0\nEndHeader\n" + b"e3 10 05 01 \n" * 9}
    for number in (1, 2, 3):
        files[f"{MACROS}macro00{number}.mac"] = macro(f"First {number}", number + 2)
        files[f"{OTHERS}macro00{number}.mac"] = macro(f"Second {number}", 60, "0.25")
    for folder in (MACROS, OTHERS, OWN, folder_of(SNAPSHOT)):
        files[folder + NEXT] = macro("Next", 1, "0.1")
    tree = {}
    for path, content in files.items():
        folder = tree
        *folders, name = path.replace("c:", "c").split("\\")
        for part in folders:
            folder = folder.setdefault(part, {})
        folder[name] = (content, 0o644)
    return tree


def folder_of(path):
    return path[:path.rindex("\\") + 1]


class Operation:
    """Commands, one after the other, that write `targets`; `prepare` are others before them. Of several targets each is
    done for itself when `each`, else all or none. `cut_short` is a command that is killed before them, at a call. "acts"
    are what the window does; only the last one is watched, and is given no `threads`, so that there is one order of all
    calls, but where it cannot do without. What only `mirrors` another place is owed to nobody: it need not be flushed, and
    may be there before its operation has failed."""

    def __init__(self, name, commands, targets, prepare=(), each=False, look=None, cut_short=None, threads=False,
                 mirrors=False):
        self.name, self.commands, self.targets, self.prepare = name, commands, targets, prepare
        self.each, self.cut_short, self.threads, self.mirrors = each, cut_short, threads, mirrors
        self.look = look or ["show", targets[0]]  # the bytes tell of the others
        # Has to work, whatever happened, and leaves nothing over in the folders that were written.
        self.next = ["rename", folder_of(targets[-1]) + NEXT, "Next one"]
        self.of_window, self.acts = (commands[0][0] == word for word in ("window", "acts"))
        if cut_short or commands[0][0] in ("replace", "restore"):
            self.next = ["replace", "value:VALUE=0.1->0.2", self.next[1]]
        elif self.of_window:
            self.next = ["window", "start", "edit=0.8", "save"]


ONE, TWO, NEW = MACROS + "macro001.mac", OTHERS + "macro002.mac", MACROS + "macro500.mac"
ALL = [f"{MACROS}macro00{number}.mac" for number in (1, 2, 3)]
COPY_B = OWN + "tempB.mac"
THEIRS = [f"{OTHERS}macro00{number}.mac" for number in (1, 2, 3)]
EDITED, LOOK = [["window", "start", "edit=0.6"]], ["window", "look"]
RULE = "value:VALUE=0.5->0.7"
KEPT = ["rename", ONE, "Kept"]
SHARED = ["insert-classic", ONE, "23 10 05 01 "]

OPERATIONS = [
    Operation("rename", [["rename", ONE, "Changed"]], [ONE]),
    Operation("edit", [SHARED], [ONE], [KEPT]),
    Operation("edit, long", [["insert-classic", TWO, "23 10 05 01 "]], [TWO]),
    Operation("remove", [["remove", ONE, "0"]], [ONE], [KEPT, SHARED]),
    Operation("create", [["create", NEW, "Fresh"]], [NEW]),
    Operation("create over", [["create", ONE, "Fresh"]], [ONE], [KEPT]),
    Operation("convert", [["convert", KEY, NEW, "Converted"]], [NEW]),
    Operation("copy", [["copy-macro", ONE, TWO]], [TWO]),
    Operation("copy many", [["copy-macro", *ALL, OTHERS]], THEIRS, each=True),
    Operation("delete", [["delete-macro", ONE]], [ONE]),
    Operation("delete many", [["delete-macro", *ALL]], ALL, [KEPT], each=True),
    Operation("put back", [["history", "restore", "{kept}"]], [ONE], [KEPT]),
    Operation("put back, long", [["history", "restore", "{kept}"]], [TWO], [["rename", TWO, "Kept"]]),
    Operation("replace", [["replace", RULE, MACROS]], ALL),
    Operation("replace, put back", [["replace", RULE, ONE], ["history", "restore", "{kept}"]], [ONE]),
    Operation("replace, cut short", [["settings"]], ALL, cut_short=(["replace", RULE, MACROS], "rename", 6)),
    Operation("restore", [["restore", SNAPSHOT, OTHERS]], THEIRS, [["snapshot", MACROS, SNAPSHOT]]),
    Operation("restore, cut short", [["settings"]], THEIRS, [["snapshot", MACROS, SNAPSHOT]],
              cut_short=(["restore", SNAPSHOT, OTHERS], "rename", 6)),
    Operation("snapshot", [["snapshot", MACROS, SNAPSHOT]], [SNAPSHOT], look=["snapshot", SNAPSHOT]),
    Operation("snapshot over", [["snapshot", OTHERS, SNAPSHOT]], [SNAPSHOT], [["snapshot", MACROS, SNAPSHOT]],
              look=["snapshot", SNAPSHOT]),
    Operation("settings", [["settings", "--address-a", "10.1.2.3"]], [OWN + "Settings.dat"], look=["settings"]),
    Operation("settings over", [["settings", "--address-a", "10.1.2.3"]], [OWN + "Settings.dat"],
              [["settings", "--address-b", "10.4.4.4"]], look=["settings"]),
    Operation("download", [["panel", "{panel}", "get", "1", "1", ONE]], [ONE]),
    Operation("window edit", [["window", "start", "edit=0.7"]], [ONE], look=LOOK),
    Operation("window steps", [["window", "start", "edit=0.7"], ["window", "start", "undo"]], [ONE], EDITED, look=LOOK),
    Operation("window save", [["window", "start", "save"]], [ONE], EDITED, look=LOOK),
    Operation("act save", [["acts", "edit", "save"]], [ONE]),
    Operation("act save as", [["acts", "edit", "saveAs=500"]], [NEW]),
    Operation("act save as, over", [["acts", "edit", "saveAs=2"]], [ALL[1]]),
    Operation("act create", [["acts", "create=500"]], [NEW]),
    Operation("act copy", [["acts", "copy=2"]], [ALL[1]]),
    Operation("act rename", [["acts", "rename=Changed"]], [ONE]),
    Operation("act delete", [["acts", "delete"]], [ONE]),
    Operation("act undo rename", [["acts", "rename=Changed", "undo"]], [ONE]),
    Operation("act undo delete", [["acts", "delete", "undo"]], [ONE]),
    Operation("act undo create", [["acts", "create=500", "undo"]], [NEW]),
    Operation("act open there", [["acts", "panel={address}", "pane=B", "open=001"]], [COPY_B], threads=True, mirrors=True),
    Operation("act fetch", [["acts", "panel={address}", "pane=B", "open=001", "pane=A", "copy=2"]], [ALL[1]], threads=True),
    Operation("act close", [["acts", "close"]], [OWN + "Settings.dat"], look=["settings"]),
    Operation("snapshot of panel", [["panel", "{panel}", "snapshot", SNAPSHOT]], [SNAPSHOT], look=["snapshot", SNAPSHOT]),
]


class Bench:
    """A folder of its own to try an operation in, and the programs."""

    def __init__(self, programs):
        memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
        self.folder = os.path.realpath(tempfile.mkdtemp(prefix="tessaly-proof-", dir=memory))
        self.programs = os.path.abspath(programs)
        self.root = os.path.join(self.folder, "root")
        home = os.path.join(self.folder, "home")
        os.mkdir(home)
        self.environment = {"PATH": os.environ["PATH"], "HOME": home, "LC_ALL": "C.UTF-8", "TESSALY_ROOT": self.root,
                            "QT_QPA_PLATFORM": "offscreen"}
        self.panel = None

    def close(self):
        if self.panel:
            self.panel.close()
        shutil.rmtree(self.folder)

    def lay_out(self, frozen_tree):
        shutil.rmtree(self.root, ignore_errors=True)
        disk.lay_out(frozen_tree, self.root)

    def words(self, words):
        """A command of the twin; of the window's files behind "window"; with a panel's address for "{panel}"."""
        if words[0] == "acts":
            return self.window_words(words[1:])
        if words[0] == "window":
            return [self.program("tessaly-window-files"), self.root, *words[1:]]
        if "{panel}" not in words:
            return [self.program("tessaly-cli"), *words]
        self.panel = self.panel or Panel(self)
        words = ["127.0.0.1" if word == "{panel}" else word for word in words]
        return [self.program("tessaly-cli"), *words, *self.panel.ports]

    def window_words(self, acts):
        ftp = []
        if any("{address}" in act for act in acts):
            self.panel = self.panel or Panel(self)
            ftp = ["--ftp-port", self.panel.ports[-1]]
            acts = [act.replace("{address}", "127.0.0.1:" + self.panel.ports[1]) for act in acts]
        return [self.program("tessaly-window-acts"), *ftp, self.root, *acts]

    def program(self, name):
        return os.path.join(self.programs, name)

    def run(self, words):
        return subprocess.run(self.words(words), env=self.environment, capture_output=True, timeout=120, check=False)

    def host(self, path):
        return os.path.join(self.root, path.replace(":", "").replace("\\", "/"))

    def bytes_of(self, paths):
        found = []
        for path in paths:
            try:
                with open(self.host(path), "rb") as file:
                    found.append(file.read())
            except FileNotFoundError:
                found.append(None)
        return found

    def history(self):
        rows = json.loads(self.run(["history", "--json"]).stdout)
        for row in rows:
            day, moment = row["id"].split("/")
            folder = os.path.join(self.root, "history", day)
            name, = [name for name in os.listdir(folder) if name.startswith(moment) and name.endswith(".mac")]
            with open(os.path.join(folder, name), "rb") as file:
                row["bytes"] = file.read()
        return {row["id"]: row for row in rows}

    def leftovers(self):
        return [name for _, _, names in os.walk(self.root) for name in names if name.startswith(".tessaly-")]


class Tried:
    """An operation at its beginning: the tree, and what is told of the targets at first and after each command."""

    def __init__(self, bench, operation):
        self.bench, self.operation = bench, operation
        bench.lay_out(disk.frozen(site_tree()))
        for words in operation.prepare:
            done = bench.run(words)
            assert done.returncode == 0, (words, done.stderr)
        self.stages, self.known = [self.looked_at()], bench.history()
        self.kept_before = set(self.known)
        if operation.cut_short:
            words, call, when = operation.cut_short
            calls.run_recorded(bench.words(words), bench.environment, inject=f"{call}:signal=KILL:when={when}")
            assert any(name.endswith(".batch") for name in os.listdir(os.path.join(bench.root, "batches")))
        self.tree = disk.read_tree(bench.root)
        self.calls, self.commands, self.said = [], [], None
        for words in operation.commands:
            self.commands.append([next(iter(bench.history())) if word == "{kept}" else word for word in words])
            self.before = disk.read_tree(bench.root)
            done, made = self.run(self.commands[-1])
            assert done.returncode == 0, (words, done.stderr)
            self.calls += made
            self.stages.append(self.looked_at())
            self.after = disk.read_tree(bench.root)
        self.kept_after = bench.history()
        self.known.update(self.kept_after)

    def run(self, words, inject=None):
        """Runs a command; what it answered, and its calls. `began` is the disk before them."""
        if words[0] == "acts":
            return self.act(words, inject)
        self.began = self.before
        return calls.run_recorded(self.bench.words(words), self.bench.environment, inject=inject)

    def run_plainly(self, words, environment=(), largest=None):
        """The same without a recorder, and with no file that grows beyond a size."""
        environment = {**self.bench.environment, **dict(environment)}
        if words[0] == "acts":
            return self.act(words, None, environment, largest)[0]

        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            if largest is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (largest, largest))
        return subprocess.run(self.bench.words(words), env=environment, capture_output=True, check=False, preexec_fn=limit)

    def act(self, words, inject, environment=None, largest=None):
        """What has failed is done once more, and has to work then."""
        window = Window(self.bench.words(words), environment or self.bench.environment)
        self.began = disk.read_tree(self.bench.root)
        if self.said is None:
            self.stages.append(self.look())
        recorded = None
        if environment is None:
            injected = [] if self.operation.threads else ["clone3:error=EAGAIN"]
            recorded = calls.Recorded(window.process.pid, injected + ([inject] if inject else []))
        said = window.act(largest)
        self.said = self.said or said
        made = recorded.calls() if recorded else []
        done = Acted(said, self.said, window.process, self.look())
        if done.returncode == 1 and words[-1] != "close" and not any(words in said for words in DONE_TOLD):
            again = Acted(window.act(), self.said, window.process, self.look())
            if again.returncode or again.found != self.new:
                done.wrongs.append(f"once more: {again.stderr.decode()}" + self.told(again.found, False))
        window.end()
        return done, made

    def looked_at(self):
        """What is told now; nothing of it stays."""
        tree = disk.frozen(disk.read_tree(self.bench.root))
        found = self.look()
        self.bench.lay_out(tree)
        return found

    def look(self):
        """What each target is told to be, and its bytes. The lines about batches are taken out."""
        done = self.bench.run(self.operation.look)
        lines = done.stderr.decode().splitlines()
        self.batches = [line for line in lines if line.startswith("the batch ")]
        told = done.returncode, done.stdout, tuple(line for line in lines if line not in self.batches)
        first, *others = self.bench.bytes_of(self.operation.targets)
        if self.operation.targets == [SNAPSHOT]:  # whose sums are looked at, and which tells of the time of each run
            first = first is not None
        return [(told, first), *others]

    @property
    def old(self):
        return self.stages[0]

    @property
    def new(self):
        return self.stages[-1]

    def judged(self, finished):
        """How the targets are told, and what is wrong with the disk as it lies there: they are one of the stages, the
        last one once the operation is `finished`; the history knows what it has; and the next command works."""
        found = self.look()
        wrongs = [] if self.is_right(found, finished) else [self.told(found, finished)]
        for line in self.batches:
            said = self.stages[1] if "has been ended" in line else self.old if "has been undone" in line else None
            if found != said or "let alone" in line or "could not write" in line:
                wrongs.append("said falsely: " + line)
        wrongs += self.judged_history(finished)
        return found, wrongs + self.judged_next()

    def judged_next(self):
        done = self.bench.run(self.operation.next)
        wrongs = ["the next one: " + done.stderr.decode().strip()] if done.returncode or done.stderr else []
        return wrongs + [f"left over: {name}" for name in self.bench.leftovers()]

    def is_right(self, found, finished):
        if finished:
            return found == self.new
        if self.operation.each:
            return all(one in (old, new) for one, old, new in zip(found, self.old, self.new))
        return found in self.stages

    def told(self, found, finished):
        names = [target.split("\\")[-1] for target in self.operation.targets]
        states = ["old" if one == old else "new" if one == new else "neither"
                  for one, old, new in zip(found, self.old, self.new)]
        return f"{'finished, but ' if finished else ''}{' '.join(map(' '.join, zip(names, states)))}" + \
            "".join(f" {one}" for one, state in zip(found, states) if state == "neither")

    def judged_history(self, finished):
        """What is kept is what was kept, whole and from where it was; nothing of before is missing. What the end of a
        batch has kept anew is like what the batch itself would have."""
        wrongs, found = [], self.bench.history()
        alike = [_content(row) for row in self.known.values()]
        for kept, row in found.items():
            origin = not row["place"] and not row["name"] and not finished  # its record may be missing
            like = [known for known in alike if known == _content(row) or (origin and known[0] == row["bytes"])]
            if not like or (kept in self.known and row["bytes"] != self.known[kept]["bytes"]):
                wrongs.append(f"the history tells of {kept}: {row}")
        wanted = self.kept_after if finished and not self.operation.cut_short else self.kept_before
        return wrongs + [f"the history lacks {kept}" for kept in wanted if kept not in found]


def _content(row):
    return row["bytes"], row["place"], row["name"], row["change"], row["size"]


class Acted:
    """What became of an act of the window, as of a command: a failure is one that is told as such, and what is told
    beside what `usually` is stands in for the text of a warning."""

    def __init__(self, said, usually, process, found):
        failed = any(words in said for words in (*NOT_DONE, *DONE_TOLD)) and said != usually
        self.returncode = 1 if failed else 0 if said else process.wait() or 1
        self.stderr = b"" if said == usually else said.encode()
        self.found, self.wrongs = found, []


class Window:
    """The window, which stands before the last of some acts."""

    def __init__(self, words, environment):
        self.process = subprocess.Popen(words, env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        start_new_session=True,
                                        preexec_fn=lambda: signal.signal(signal.SIGXFSZ, signal.SIG_IGN))
        assert self.process.stdout.readline() == "ready\n", "the window does not get there"

    def act(self, largest=None):
        """What it says; nothing when it has ended, or had to be."""
        _, most = resource.prlimit(self.process.pid, resource.RLIMIT_FSIZE)
        resource.prlimit(self.process.pid, resource.RLIMIT_FSIZE, (most if largest is None else largest, most))
        hanging = threading.Timer(60, self.process.kill)
        hanging.start()
        self.process.stdin.write("go\n")
        self.process.stdin.flush()
        said = self._said()
        hanging.cancel()
        return said

    def _said(self):
        lines = []
        for line in self.process.stdout:
            if line == "\n":
                return "".join(lines)
            lines.append(line)
        return ""

    def end(self):
        self.process.communicate()


class Panel:
    """A simulated panel with a macro, beside the site."""

    def __init__(self, bench):
        control, ftp = free_port(), free_port()
        self.ports = ["--control-port", str(control), "--ftp-port", str(ftp)]
        self.tree = tree = os.path.join(bench.folder, "panel")
        os.makedirs(os.path.join(tree, PANEL_MACRO[:PANEL_MACRO.rindex("/")]))
        with open(os.path.join(tree, PANEL_MACRO), "wb") as file:
            file.write(macro("Of the panel", 70))
        self.process = subprocess.Popen([bench.program("tessaly-panelsim"), "--root", tree, *self.ports],
                                        env=bench.environment, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                        start_new_session=True)
        for port in (control, ftp):
            while socket.socket().connect_ex(("127.0.0.1", port)) != 0:
                assert self.process.poll() is None, "the panel does not start"
                time.sleep(0.05)

    def close(self):
        self.process.terminate()
        self.process.wait()
        shutil.rmtree(self.tree)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def tried_all(words, columns, what, trial):
    """Tries each operation but acts, or those that are named behind the programs, on one bench, and tells a row of each.
    `trial` gives how many `what` there were, a figure for each column, and texts of what is wrong. The exit code."""
    if not words:
        return 2
    if not calls.may_trace():
        print("strace may not trace here")
        return SKIPPED
    bench = Bench(words[0])
    print(_row("operation", [*columns, "wrong"]))
    count, wrong, began = 0, 0, time.monotonic()
    for operation in OPERATIONS:
        if operation.name not in words[1:] and (len(words) > 1 or operation.acts):
            continue
        tries, figures, wrongs = trial(bench, operation)
        print(_row(operation.name, [*figures, len(wrongs)]), flush=True)
        count += tries
        wrong += len(wrongs)
        for text in wrongs[:None if "TESSALY_PROOF_ALL" in os.environ else MOST_TOLD]:
            print("  WRONG: " + text)
    bench.close()
    print(f"{count} {what} in {time.monotonic() - began:.0f} s, {wrong} wrong")
    return 1 if wrong or not count else 0


def _row(name, figures):
    return f"{name:24}" + "".join(f"{figure:>10}" for figure in figures)
