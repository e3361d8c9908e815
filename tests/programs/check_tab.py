#!/usr/bin/python3
"""Presses Tab in a bash: check_tab.py PROGRAM_FOLDER SOURCE_FOLDER

Each row is what is typed, and the line as it stands after Tab; readline has its own mind about quotes and colons.
"""
import os
import pty
import select
import subprocess
import sys
import tempfile
from pathlib import Path

programs, source = Path(sys.argv[1]), Path(sys.argv[2])
ROWS = [
    ("tessaly-cli show c:/prog", "tessaly-cli show c:/programme/"),
    ("tessaly-cli show c:/programme/rv48/appli/Ev", "tessaly-cli show c:/programme/rv48/appli/Evening\\ News/"),
    ("tessaly-cli show c:/programme/RV48/appli/Evening\\ News/CP1/macrowp1/macro999",
     "tessaly-cli show c:/programme/RV48/appli/Evening\\ News/CP1/macrowp1/macro999.mac "),
    ("tessaly-cli show 'c:\\prog", "tessaly-cli show 'c:\\programme\\"),
    ("tessaly-cli show 'c:\\programme\\RV48\\appli\\ev", "tessaly-cli show 'c:\\programme\\RV48\\appli\\Evening News\\"),
    ("tessaly-cli show 'c:\\programme\\RV48\\appli\\Evening News\\CP1\\macroWP1\\macro999",
     "tessaly-cli show 'c:\\programme\\RV48\\appli\\Evening News\\CP1\\macroWP1\\macro999.mac' "),
    ("tessaly-cli show c:\\\\programme\\\\RV48\\\\appli\\\\Ev",
     "tessaly-cli show c:\\\\programme\\\\RV48\\\\appli\\\\Evening\\ News\\\\"),
    ("tessaly-cli list c:/programme/RV48/appli Stud", "tessaly-cli list c:/programme/RV48/appli Studio\\ Talk "),
    ("tessaly-cli list c:/programme/RV48/appli Evening\\ News CP7 ",
     "tessaly-cli list c:/programme/RV48/appli Evening\\ News CP7 "),
    ("tessaly-cli show o", "tessaly-cli show one\\ more.mac "),
    ("tessaly-cli --root=sh", "tessaly-cli --root=shows/"),
    ("tessaly-cli paste one.mac --at=st", "tessaly-cli paste one.mac --at=start "),
    ("tessaly --pal", "tessaly --palette "),
    ("tessaly --palette da", "tessaly --palette dark "),
    ("tessaly --language e", "tessaly --language en "),
    ("tessaly --root sh", "tessaly --root shows/"),
    ("tessaly-panelsim --refuse-l", "tessaly-panelsim --refuse-login "),
    ("tessaly-panelsim --script o", "tessaly-panelsim --script one\\ more.mac "),
    ("tessaly-panelsim --see", "tessaly-panelsim --seed "),
]


class Shell:
    """A bash at a terminal, which says what stands on its line when it is asked by Ctrl-T."""

    def __init__(self, folder):
        pid, self.terminal = pty.fork()
        if pid == 0:
            os.chdir(folder)
            os.environ.update(PATH=f"{programs}:{os.environ['PATH']}", TESSALY_ROOT=str(source / "site"), TERM="dumb",
                              INPUTRC="/dev/null", LC_ALL="C.UTF-8")
            os.execvp("bash", ["bash", "--norc", "--noprofile", "-i"])
        self.told = ""
        self.type("""told() { printf '<%s>\\n' "${READLINE_LINE@Q}" >&3; READLINE_LINE=''; }\n""")
        self.type("exec 3>told\n")
        self.type(f". {source}/packaging/tessaly.completion.bash\n")
        self.type("bind 'set enable-bracketed-paste off'; bind 'set bell-style none'; bind -x '\"\\C-t\": told'\n")
        self.type("echo rea''dy\n", until="ready\r\n")
        self.lines = (Path(folder) / "told").open()

    def type(self, keys, until=None):
        os.write(self.terminal, keys.encode())
        while until and until not in self.told:
            if not select.select([self.terminal], [], [], 60)[0]:
                raise TimeoutError(self.told)
            self.told += os.read(self.terminal, 4096).decode(errors="replace")

    def after_tab(self, typed):
        self.type(typed + "\t\x14")
        said = ""
        while not said.endswith(">\n"):
            if select.select([self.terminal], [], [], 0.02)[0]:
                self.told = os.read(self.terminal, 4096).decode(errors="replace")  # else the shell waits for a reader
            said += self.lines.read()
        quoted = said.strip()[1:-1]
        return subprocess.run(["bash", "-c", f"printf %s {quoted}"], text=True, capture_output=True).stdout


failed = 0
with tempfile.TemporaryDirectory() as name:
    (Path(name) / "shows").mkdir()
    (Path(name) / "one more.mac").touch()
    shell = Shell(name)
    for before, after in ROWS:
        if (got := shell.after_tab(before)) != after:
            print(f"{before}: becomes {got!r}, not {after!r}")
            failed = 1
    os.close(shell.terminal)
print(f"{len(ROWS)} lines are completed" if not failed else "")
sys.exit(failed)
