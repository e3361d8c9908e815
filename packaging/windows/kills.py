#!/usr/bin/python3
"""Kills the Windows twin under wine at random points of its writing: 
kills.py FOLDER_OF_THE_WINDOWS_PROGRAMS FOLDER_OF_THIS_SYSTEMS [KILLS]

Each kill hits one command that writes: a rename, a copy over a macro, the conversion of a key file, the settings, a
replacement in many macros. The twin of this system, which begins by ending what was cut short, then has to find every
file as it was or as the command makes it (the same command on a copy says how), all of them alike after a replacement,
and kept macros whole; what is left over of the killed write goes with the next one. The next command has to work.
"""
import itertools
import random
import shutil
import subprocess
import sys
import tempfile
import time
from collections import Counter
from pathlib import Path

from twin import SITE, WINE, begin_wine, spelled

MACROS = 40  # in the folder where a replacement is killed
WORK = "c:\\work\\macroWP1"
LEFT = ".tessaly-*.tmp"
WATCHED = ("c/work/macroWP1", "c/programme/RV48/bin", "history", "batches")


def files(root):
    return {path.relative_to(root): path.read_bytes() for path in root.rglob("*")
            if path.is_file() and not path.name.startswith(".tessaly")}


def of_site(tree):
    return {path: content for path, content in tree.items() if path.parts[0] == "c"}


def commands(macros, keys):
    """Without end; each changes what the one before it of its kind has made."""
    for turn in itertools.count():
        target = f"{WORK}\\macro{turn % MACROS:03}.mac"
        yield "rename", ["rename", target, f"Turn {turn}"]
        yield "copy", ["copy-macro", spelled(macros[turn % len(macros)]), target]
        yield "convert", ["convert", spelled(keys[turn % len(keys)]), f"{WORK}\\macro{100 + turn % 5}.mac", f"Key {turn}"]
        yield "settings", ["settings", "--rewrite", "--address-a", f"10.0.{turn // 250}.{1 + turn % 250}"]
        yield "replace", ["replace", "segment:ME1->ME2" if turn % 2 == 0 else "segment:ME2->ME1", WORK]


class Kills:
    def __init__(self, folder):
        self.windows = [*WINE, str(Path(sys.argv[1]).resolve() / "tessaly-cli.exe")]
        self.linux = [str(Path(sys.argv[2]).resolve() / "tessaly-cli")]
        self.root, self.copy = folder / "site", folder / "copy"
        self.counts, self.faults, self.random = Counter(), [], random.Random(20)
        self.seen = set()  # every content that a macro has had
        self.lasting = {}  # how long a command of a kind takes, in seconds

    def run(self, program, root, words):
        return subprocess.run([*program, "--root", str(root), *words], stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=120, check=False)

    def watch(self):
        return [(path, path.stat().st_mtime_ns) for path in map(self.root.joinpath, WATCHED) if path.exists()]

    def killed(self, kind, words):
        """Runs it and kills it: by the clock, or some time after its first write shows."""
        before, by_clock = self.watch(), self.random.random() < 0.3
        process = subprocess.Popen([*self.windows, "--root", str(self.root), *words], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        began, last = time.monotonic(), self.lasting.get(kind, 2.0)
        end = began + self.random.uniform(0.2, 1.0) * last
        while process.poll() is None:
            if by_clock and time.monotonic() > end:
                break
            if not by_clock and self.watch() != before:
                time.sleep(self.random.choice((0, 0.004, 0.02)) * last * self.random.expovariate(1))
                break
        else:
            self.lasting[kind] = time.monotonic() - began
        process.kill()
        return process.wait() < 0

    def check(self, kind, words, old, new):
        told = " ".join(words)
        left = Counter(path.parent for path in self.root.rglob(LEFT))
        if any(count > 1 for count in left.values()):
            self.faults.append(f"{told}: leftovers pile up: {dict(left)}")
        recovered = self.run(self.linux, self.root, ["list"])
        if recovered.returncode != 0:
            self.faults.append(f"{told}: the next start: {recovered.stderr}")
        now = files(self.root)
        states = {"new" if now.get(path) == new.get(path) else "old" if now.get(path) == old.get(path) else "wrong"
                  for path in {*old, *new} if old.get(path) != new.get(path)}
        if "wrong" in states or (kind == "replace" and len(states) > 1):
            self.faults.append(f"{told}: {states}")
        if of_site(now).keys() - old.keys() - new.keys():
            self.faults.append(f"{told}: unknown files")
        self.seen.update(old.values(), new.values())
        kept = [content for path, content in now.items() if path.parts[0] == "history" and path.suffix in (".mac", ".upk")]
        if any(content not in self.seen for content in kept):
            self.faults.append(f"{told}: a kept macro is not whole")
        return "new" if states == {"new"} else "old"

    def turn(self, kind, words):
        if self.copy.exists():
            shutil.rmtree(self.copy)
        shutil.copytree(self.root, self.copy)
        if self.run(self.linux, self.copy, words).returncode > 1:
            sys.exit(f"kills: cannot be done here: {words}")
        old, new = of_site(files(self.root)), of_site(files(self.copy))
        if self.killed(kind, words):
            self.counts[self.check(kind, words, old, new), kind] += 1
        else:
            self.counts["too late", kind] += 1
            self.check(kind, words, old, new)

    def kills(self):
        return sum(count for (state, _), count in self.counts.items() if state != "too late")

    def whole(self, words):
        """A command that nobody kills, after which nothing is left over in its folder."""
        done = self.run(self.windows, self.root, words)
        if done.returncode != 0:
            self.faults.append(f"the next command: {words}: {done.stderr}")
        if list((self.root / WATCHED[0]).glob(LEFT)):
            self.faults.append(f"left over after {words}")


def main():
    wanted = int(sys.argv[3]) if len(sys.argv) > 3 else 200
    macros, keys = sorted(SITE.rglob("*.mac")), sorted(SITE.rglob("*.upk"))
    begin_wine()
    with tempfile.TemporaryDirectory(prefix="tessaly-kills-") as scratch:
        kills = Kills(Path(scratch))
        shutil.copytree(SITE, kills.root)
        work = kills.root / WATCHED[0]
        work.mkdir(parents=True)
        for number in range(MACROS):
            shutil.copy(macros[number % len(macros)], work / f"macro{number:03}.mac")
        for count, (kind, words) in enumerate(commands(macros, keys)):
            if kills.kills() >= wanted or count >= 5 * wanted:
                break
            kills.turn(kind, words)
            if count % 10 == 9:
                kills.whole(["rename", f"{WORK}\\macro000.mac", f"Whole {count}"])
    for kind in ("rename", "copy", "convert", "settings", "replace"):
        print(f"{kind:10}" + "".join(f" {state} {kills.counts[state, kind]:4}" for state in ("old", "new", "too late")))
    print("\n".join([*kills.faults, f"kills: {kills.kills()}, {len(kills.faults)} faults"]))
    return 1 if kills.faults or kills.kills() < wanted else 0


if __name__ == "__main__":
    sys.exit(main())
