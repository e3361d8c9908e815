#!/usr/bin/python3
"""Does the same work by acts of the window and by commands of the twin, on the same site and a panel, and compares every
byte of what comes of it: all macros of the disk and of the panel, and what the history has kept.

usage: two_ways.py PROGRAMS [WORK ...]    a row for each work; 1 when anything differs
"""
import os
import re
import subprocess
import sys
import time

import disk
from operations import ALL, KEY, MACROS, NEW, ONE, OTHERS, RULE, Bench, Panel, Window, site_tree

LONGEST = 5  # seconds
FUNCTION = "QMF1.ME2.KEY1.CLIP.SET"
PANEL_MACROS = "flash/data/PANEL/macro/workplace1"
DIFFERENT = [["set", ONE, str(command), f"0.{command + 1}"] for command in range(3)]  # so that an order is seen

# What is done, the window's acts, and the commands; each command is given what the one before it has printed, and the
# first one the macro.
ON_DISK = [
    ("remove", ["row=1", "choose=deleteCommand", "save"], [["remove", ONE, "1"]]),
    ("insert", ["new=25", "save"], [["insert", ONE, FUNCTION, "VALUE=0.250000"]]),
    ("insert at the start", ["newAtStart=25", "save"], [["insert", ONE, FUNCTION, "VALUE=0.250000", "--at", "start"]]),
    ("insert before", ["row=2", "newAtRow=25", "save"], [["insert", ONE, FUNCTION, "VALUE=0.250000", "--at", "2"]]),
    ("modify", ["row=1", "modify=25", "save"], [["set", ONE, "1", "0.250000"]]),
    ("move down", ["row=0", "choose=moveDown", "save"], [["move", ONE, "0", "--to", "2"]]),
    ("move up", ["row=2", "choose=moveUp", "save"], [["move", ONE, "2", "--to", "1"]]),
    ("duplicate", ["row=1", "choose=duplicate", "save"], [["copy", ONE, "1"], ["paste", ONE, "--at", "2"]]),
    ("cut and paste", ["row=0", "choose=cut", "row=1", "choose=paste", "save"], [["move", ONE, "0", "--to", "2"]]),
    ("save as", ["row=0", "choose=deleteCommand", "saveAs=500"], [["remove", "-", "0"], ["copy-macro", "-", NEW]]),
    ("undo and redo", ["row=0", "choose=deleteCommand", "row=0", "choose=deleteCommand", "choose=undo", "save"],
     [["remove", ONE, "0"]]),
    ("create", ["create=500"], [["create", NEW, "New"]]),
    ("create over", ["create=2"], [["create", ALL[1], "New"]]),
    ("copy", ["copy=500"], [["copy-macro", OTHERS + "macro001.mac", NEW]]),
    ("copy over", ["copy=2"], [["copy-macro", OTHERS + "macro001.mac", ALL[1]]]),
    ("convert", ["controlPanel=CP7", "copy=500"], [["convert", "{key}", NEW, "MK04"]]),
    ("rename", ["rename=Lead & \"out\""], [["rename", ONE, "Lead & \"out\""]]),
    ("delete", ["delete"], [["delete-macro", ONE]]),
    ("undo of a renaming", ["rename=Changed", "undo"], [["rename", ONE, "Changed"], ["history", "restore", "{kept}"]]),
    ("undo of a deletion", ["delete", "undo"], [["delete-macro", ONE], ["history", "restore", "{kept}"]]),
    ("replace", ["replace=" + RULE], [["replace", RULE, MACROS]]),
]
ON_PANEL = [
    ("fetch", ["panel={address}", "pane=B", "open=001", "pane=A", "copy=2"], [["panel", "{panel}", "get", "1", "1", ALL[1]]]),
    ("send", ["panel={address}", "pane=B", "open=001", "copy=500"], [["panel", "{panel}", "put", "1", "500", ONE]]),
    ("send over", ["panel={address}", "pane=B", "open=001", "copy=1"], [["panel", "{panel}", "put", "1", "1", ONE, "--force"]]),
    ("save there", ["panel={address}", "pane=B", "open=001", "edit", "save"],
     [["panel", "{panel}", "get", "1", "1", "-"], ["remove", "-", "0"], ["panel", "{panel}", "put", "1", "1", "-", "--force"]]),
    ("rename there", ["panel={address}", "pane=B", "open=001", "rename=Changed"], [["panel", "{panel}", "rename", "1", "1", "Changed"]]),
    ("delete there", ["panel={address}", "pane=B", "open=001", "delete"], [["panel", "{panel}", "delete", "1", "1"]]),
]


class Ways:
    """What the history calls a save of the window is an edit or a copy of the commands."""

    def __init__(self, bench, on_panel, saves):
        self.bench, self.on_panel, self.saves = bench, on_panel, saves

    def begin(self):
        self.bench.lay_out(disk.frozen(site_tree()))
        for words in DIFFERENT:
            self.command(words)
        if self.on_panel:
            self.bench.panel = Panel(self.bench)

    def found(self):
        return self.macros(), self.kept()

    def end(self):
        if self.on_panel:
            self.bench.panel.close()
            self.bench.panel = None

    def macros(self):
        """Bytes by path, of the disk and the panel; the panel's own folder goes with it."""
        found = {}
        tops = [os.path.join(self.bench.root, "c", "programme", "RV48", "appli")]
        tops += [os.path.join(self.bench.folder, "panel", PANEL_MACROS)] if self.on_panel else []
        for top in tops:
            for folder, _, names in os.walk(top):
                for name in names:
                    with open(os.path.join(folder, name), "rb") as file:
                        found[os.path.relpath(os.path.join(folder, name), self.bench.folder)] = file.read()
        return found

    def kept(self):
        """The window is given the panel's port with its address, the commands beside it."""
        return sorted((re.sub(":[0-9]+ ", " ", row["place"]), row["name"], "" if self.saves else row["change"], row["bytes"])
                      for row in self.bench.history().values())

    def by_window(self, acts, wanted):
        """A panel is only asked to rename and to delete, and takes its time."""
        self.begin()
        window = Window(self.bench.words(["acts", *acts]), self.bench.environment)
        said, deadline = window.act(), time.monotonic() + LONGEST
        while (found := self.found()) != wanted and self.on_panel and time.monotonic() < deadline:
            time.sleep(0.05)
        window.end()
        self.end()
        return said, found

    def by_commands(self, commands):
        self.begin()
        printed, = self.bench.bytes_of([ONE])
        for words in commands:
            printed = self.command(words, printed)
        found = self.found()
        self.end()
        return found

    def command(self, words, given=None):
        newest = next(iter(self.bench.history()), "") if "{kept}" in words else ""
        words = [{"{kept}": newest, "{key}": KEY}.get(word, word) for word in words]
        done = subprocess.run(self.bench.words(words), env=self.bench.environment, input=given, capture_output=True,
                              timeout=120, check=False)
        assert done.returncode == 0, (words, done.stderr)
        return done.stdout


def differences(by_window, by_commands):
    (macros, kept), (others, others_kept) = by_window, by_commands
    for path in sorted(set(macros) | set(others)):
        if macros.get(path) != others.get(path):
            yield f"{path}: {macros.get(path)} by the window, {others.get(path)} by the commands"
    for row in kept:
        if row not in others_kept:
            yield f"kept by the window alone: {row}"
    for row in others_kept:
        if row not in kept:
            yield f"kept by the commands alone: {row}"


def main(words):
    if not words:
        return 2
    bench = Bench(words[0])
    wrong = 0
    for rows, on_panel in ((ON_DISK, False), (ON_PANEL, True)):
        for name, acts, commands in rows:
            if len(words) > 1 and name not in words[1:]:
                continue
            ways = Ways(bench, on_panel, saves=acts[-1].startswith("save"))
            wanted = ways.by_commands(commands)
            said, by_window = ways.by_window(acts, wanted)
            found = list(differences(by_window, wanted))
            print(f"{name:24}{'same' if not found else 'DIFFERS'}", flush=True)
            for text in [f"the window says {said!r}", *found] if found else []:
                print("  " + text)
            wrong += bool(found)
    bench.close()
    print(f"{wrong} differ")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
