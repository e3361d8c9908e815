#!/usr/bin/python3
"""The command-line twin on this system and on Windows, set against each other:
twin.py FOLDER_OF_THE_WINDOWS_PROGRAMS FOLDER_OF_THIS_SYSTEMS [--panel]

Each of some 200 commands runs on a copy of the sample site here, and under wine on another; output, errors and exit
code have to be the same, and at the end all files, byte for byte; with --panel both then talk to a simulated panel,
each to its own, over the network. What a command says of its own root or of the time of day is left out of the
comparison, and so is the history, whose files are named after the time.
"""
import filecmp
import os
import queue
import re
import shutil
import subprocess
import sys
import tempfile
import threading
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SITE = ROOT / "site"
APPLI = "c:\\programme\\RV48\\appli"
WINE = ["wine"]
WINE_FOLDER = Path(os.environ.get("XDG_CACHE_HOME", Path.home() / ".cache")) / "tessaly-windows/wine"
os.environ.setdefault("WINEPREFIX", os.environ.get("TESSALY_WINE", str(WINE_FOLDER)))
os.environ.update(WINEDEBUG="-all", WINEARCH="win64", DISPLAY="")
SHOWN = 20  # macros and key files that are read in every way


def begin_wine():
    """Its server would hold the output of the command that starts it until it ends, and one that runs already goes with
    its last program: a program that begins just then ends with 1 and not a word. So it is a new one, which stays."""
    for words in (["wineserver", "-k"], ["wineserver", "-w"], ["wineserver", "-p600"], [*WINE, "cmd", "/c", "exit"]):
        subprocess.run(words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)


def spelled(path):
    return "c:" + "".join("\\" + part for part in path.relative_to(SITE / "c").parts)


def reading(macros, keys):
    for path in [*macros[:: max(1, len(macros) // SHOWN)][:SHOWN], *keys[:SHOWN]]:
        name = spelled(path)
        yield from ([command, name, *options] for command, *options in (
            ("show",), ("show", "--destination", "--tabs"), ("name",)))
    for path in macros[:8]:
        yield from (["effect", spelled(path)], ["show", spelled(path), "--json"], ["copy", spelled(path), "0"])
    folders = sorted({path.parent for path in macros})
    for folder in folders[:6]:
        name = spelled(folder)
        yield from (["check", name, "--json"], ["find", "ME1", name],
                    ["sheet", name, "--format", "csv", "--date", "2026-11-25"])
    yield from (["compare", spelled(a), spelled(b)] for a, b in zip(folders, folders[1:4]))
    yield from (["diff", spelled(a), spelled(b), "--json"] for a, b in zip(macros, macros[1:6]))
    yield from (["source", str(number)] for number in (0, 1, 17, 99, 100000))
    yield from (["timecode", text] for text in ("0", "1193046", "x"))
    yield from (["address", text] for text in ("10.1.2.3", "localhost", "999.1.1.1", "panel one"))
    yield from (["classic", text] for text in ("10 01 02 03", "B0 12 00 00 01", "zz", ""))
    yield from (["dictionary"], ["dictionary", "--list", "clip"], ["dictionary", "--find", "wipe size"],
                ["list", "--json"], ["list", APPLI], ["settings"], ["settings", "--json"], ["help", "set"], ["--version"],
                ["show", "c:\\none.mac"], ["show"], ["bogus"], ["show", "c:\\..\\x.mac"], ["name", APPLI])


def changing(macros, keys):
    work = "c:\\work\\macroWP1\\macro"
    copies = [f"{work}{number:03}.mac" for number in range(12)]
    yield ["create", f"{APPLI}\\Evening News\\CP2\\macroWP1\\macro999.mac", "K\u00fcche \u20ac"]
    yield from (["copy-macro", spelled(path), copy] for path, copy in zip(macros, copies))
    for copy in copies[:6]:
        yield from (["rename", copy, "Umbenannt \u00e4\u00f6\u00fc"], ["move", copy, "0", "--to", "1"], ["set", copy, "0", "0.25"],
                    ["remove", copy, "0"], ["insert-classic", copy, "10 01 02 03"], ["show", copy])
    yield from (["convert", spelled(path), f"{work}{200 + at}.mac", f"Taste {at}"] for at, path in enumerate(keys[:8]))
    yield ["delete-macro", copies[7]]
    yield ["replace", "segment:ME1->ME2", "c:\\work"]
    yield ["settings", "--rewrite", "--address-a", "10.9.8.7"]
    for shape in ("html", "csv", "pdf"):
        yield ["sheet", "c:\\work\\macroWP1", "--format", shape, "--date", "2026-11-25", "--output", f"c:\\work\\sheet.{shape}"]
    yield from (["snapshot", "c:\\work\\macroWP1", "c:\\work\\taken.zip"], ["restore", "c:\\work\\taken.zip", "c:\\work\\again"])
    yield ["compare", "c:\\work\\macroWP1", f"{APPLI}\\Evening News\\CP2\\macroWP1", "--json"]


def talking(macro):
    """What is typed at the panel's prompt first, and the words of the command."""
    fetched = "c:\\work\\fetched.mac"
    for words in (["list"], ["list", "1"], ["get", "1", "0", fetched], ["put", "2", "17", spelled(macro)],
                  ["get", "2", "17", "c:\\work\\back.mac"], ["rename", "2", "17", "Gr\u00fc\u00dfe"], ["list", "2"],
                  ["delete", "2", "17"], ["get", "2", "17", "c:\\work\\gone.mac"], ["update", fetched],
                  ["compare", "1", f"{APPLI}\\Evening News\\CP2\\macroWP1"],
                  ["snapshot", "c:\\work\\taken.zip"], ["send", "2", "c:\\work\\macroWP1", "--force"]):
        yield "", words
    for fault in ("drop-after 3", "cut-transfer 100", "refuse-login", "never-answer", "garble 50", "disk-full", "flip-byte 9"):
        for words in (["get", "1", "0", fetched], ["put", "2", "18", spelled(macro)], ["update", fetched]):
            yield "fault " + fault, words
        yield "fault off", ["list", "2"]


class Panel:
    """A simulated panel over its own copy of a site."""

    def __init__(self, program, site, folder):
        self.process = subprocess.Popen([program, "--site", site, "--root", folder / "panel", "--control-port", "0",
                                         "--ftp-port", "0"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        for line in self.process.stdout:
            ready = re.match(r"ready control \S+:(\d+) ftp \S+:(\d+)", line)
            if ready:
                self.ports = ["--control-port", ready[1], "--ftp-port", ready[2]]
                break
        self.told = queue.SimpleQueue()
        threading.Thread(target=lambda: [self.told.put(line.strip()) for line in self.process.stdout], daemon=True).start()

    def type(self, line):
        """Returns when the panel has said it again."""
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        while self.told.get(timeout=60) != line:
            pass

    def end(self):
        self.process.terminate()
        self.process.wait()


class Side:
    """One program and its copy of the site."""

    def __init__(self, program, folder):
        self.program, self.root = program, folder / "site"
        shutil.copytree(SITE, self.root)
        self.own = re.compile("|".join(re.escape(text) for text in (
            str(self.root), "z:" + str(self.root).replace("/", "\\"), "Z:" + str(self.root).replace("/", "\\"))) + r"|(?<=127\.0\.0\.1:)\d+")

    def run(self, words):
        """The twin never ends with 1 and not a word: wine did not come to run it."""
        done = self.once(words)
        return self.once(words) if done == (1, "", "") else done

    def once(self, words):
        done = subprocess.run([*self.program, "--root", str(self.root), *words], capture_output=True, timeout=120,
                              stdin=subprocess.DEVNULL)
        return (done.returncode, *(self.own.sub("ROOT", out.decode(errors="surrogateescape"))
                                   for out in (done.stdout, done.stderr)))

    def files(self):
        """But for snapshots, which tell the second at which they were taken."""
        return {path.relative_to(self.root) for path in self.root.rglob("*")
                if path.is_file() and path.suffix != ".zip" and path.relative_to(self.root).parts[0] == "c"}


def differences(sides, commands):
    for words in commands:
        ours, theirs = (side.run(words) for side in sides)
        if ours != theirs:
            yield f"{' '.join(words)}\n  here  {ours}\n  there {theirs}"[:1500]


def panel_differences(sides, panelsim, scratch, macro):
    panels = [Panel(panelsim, side.root, scratch / name) for side, name in zip(sides, "ab")]
    for typed, words in talking(macro):
        for panel in panels if typed else []:
            panel.type(typed)
        ours, theirs = (side.run(["panel", "127.0.0.1", *words, *panel.ports]) for side, panel in zip(sides, panels))
        if ours != theirs:
            yield f"{typed} panel {' '.join(words)}\n  here  {ours}\n  there {theirs}"[:1500]
    for panel in panels:
        panel.end()
    trees = [{path.relative_to(scratch / name): path.read_bytes() for path in (scratch / name / "panel").rglob("*.mac")}
             for name in "ab"]
    if trees[0] != trees[1]:
        yield "the panels hold different macros"
    ours, theirs = (side.run(["panel", "127.0.0.1", "list", "1", *panel.ports]) for side, panel in zip(sides, panels))
    if ours[0] == 0 or ours[0] != theirs[0]:
        yield f"a panel that is gone\n  here  {ours}\n  there {theirs}"


def main():
    there, here = Path(sys.argv[1]).resolve() / "tessaly-cli.exe", Path(sys.argv[2]).resolve() / "tessaly-cli"
    macros, keys = sorted(SITE.rglob("*.mac")), sorted(SITE.rglob("*.upk"))
    commands = [*reading(macros, keys), *changing(macros, keys)]
    faults = []
    begin_wine()
    with tempfile.TemporaryDirectory() as scratch:
        scratch = Path(scratch)
        (scratch / "a").mkdir(), (scratch / "b").mkdir()
        sides = Side([here], scratch / "a"), Side([*WINE, there], scratch / "b")
        for side in sides:
            (side.root / "c/work/macroWP1").mkdir(parents=True)
        faults += differences(sides, commands)
        if "--panel" in sys.argv:
            faults += panel_differences(sides, here.with_name("tessaly-panelsim"), scratch, macros[0])
        names = [side.files() for side in sides]
        faults += [f"only on one side: {name}" for name in sorted(names[0] ^ names[1])]
        faults += [f"differs: {name}" for name in sorted(names[0] & names[1])
                   if not filecmp.cmp(sides[0].root / name, sides[1].root / name, shallow=False)]
        written = sum(1 for name in names[0] if "work" in name.parts)
    print("\n".join([*faults, f"twin: {len(commands)} commands, {len(names[0])} files, {written} of them written, "
                              f"{len(faults)} differences"]))
    return 1 if faults or len(commands) < 200 or written < 20 else 0


if __name__ == "__main__":
    sys.exit(main())
