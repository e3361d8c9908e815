#!/usr/bin/python3
"""A panel and an editor that are suspended and go on later, under a clock that jumps: suspended.py PROGRAMS [ROUNDS [SEED]].

In each round tessaly-cli sends a macro to a simulated panel, fetches one or reads the names, and at a moment by chance
one of the two programs, or both, stand still for a while, as in a machine that sleeps. Half of the editors have another
year meanwhile (libfaketime of the package faketime). What is told at the end has to be true: what is called done stands there byte
for byte and what it replaced is the newest of the history; what failed has left old or new whole; nothing is left over;
and the next command works.
"""
import json
import os
import random
import re
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PATIENCE = 60  # seconds that an editor may take after everybody is awake again
FAKED = "/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1"
DONE, FAILED, UNKNOWN = 0, 1, 3


def macro(generation):
    command = f'<cmd fid="QMF1.ME1.KEY1.ON.SET" workplace="1"><param name="state" value="{generation}"/></cmd>'
    return f'<macro name="Number {generation}"><data>{command * 3000}</data></macro>\n'.encode()


class Rounds:
    def __init__(self, programs, scratch, chance):
        self.programs, self.scratch, self.chance = programs, scratch, chance
        self.stored = scratch / "panel/flash/data/PANEL/macro/workplace1/macro001.mac"
        self.stored.parent.mkdir(parents=True)
        self.stored.write_bytes(macro(0))
        self.local, self.fetched = scratch / "local.mac", scratch / "fetched.mac"
        self.clock = scratch / "clock"
        self.caught = 0  # editors that were not through when they or their panel stood still
        log = scratch / "panel.log"
        self.panel = subprocess.Popen(
            [programs / "tessaly-panelsim", "--root", scratch / "panel", "--control-port", "0", "--ftp-port", "0"],
            stdin=subprocess.PIPE, stdout=log.open("w"), start_new_session=True)
        while not (ready := re.search(r"ready control \S+:(\d+) ftp \S+:(\d+)", log.read_text())):
            time.sleep(0.01)
        self.ports = ["--control-port", ready[1], "--ftp-port", ready[2]]

    def start(self, words, jumps=False):
        environment = {**os.environ, "TESSALY_ROOT": str(self.scratch / "site")}
        if jumps:
            self.clock.write_text("@2026-11-26 12:00:00\n")
            environment |= {"LD_PRELOAD": FAKED, "FAKETIME_TIMESTAMP_FILE": str(self.clock), "FAKETIME_NO_CACHE": "1",
                            "FAKETIME_DONT_FAKE_MONOTONIC": "1"}
        return subprocess.Popen([self.programs / "tessaly-cli", *words], env=environment, text=True, start_new_session=True,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def run(self, *words):
        editor = self.start(words)
        return editor.wait(PATIENCE), editor.stdout.read()

    def act(self):
        return self.chance.choice([
            ["put", "1", "1", str(self.local), *self.ports], ["put", "1", "1", str(self.local), *self.ports],
            ["get", "1", "1", str(self.fetched), *self.ports], ["list", "1", *self.ports]])

    def suspend(self, editor, jumps):
        sleepers = self.chance.choice([[editor], [self.panel], [editor, self.panel]])
        time.sleep(self.chance.uniform(0, 0.12))
        for sleeper in sleepers:
            os.killpg(sleeper.pid, signal.SIGSTOP)
        if jumps:
            self.clock.write_text(f"@{self.chance.choice([1999, 2024, 2031])}-02-03 04:05:06\n")
        time.sleep(self.chance.choice([0.05, 0.3, 1, 1, 4 if self.chance.random() < 0.2 else 0.1]))
        for sleeper in sleepers:
            os.killpg(sleeper.pid, signal.SIGCONT)

    def round(self, generation):
        """What was wrong."""
        before, new = self.stored.read_bytes(), macro(generation)
        kept = self.fetched.read_bytes() if self.fetched.exists() else None
        self.local.write_bytes(new)
        words, jumps = self.act(), self.chance.random() < 0.5
        editor = self.start(["panel", "127.0.0.1", *words], jumps)
        self.suspend(editor, jumps)
        self.caught += editor.poll() is None
        try:
            told, text = editor.wait(PATIENCE), editor.stdout.read()
        except subprocess.TimeoutExpired:
            os.killpg(editor.pid, signal.SIGKILL)
            return "no end"
        now = self.stored.read_bytes()
        wrong = self.judge(words[0], told, before, new, now, kept)
        left = [path.name for path in self.scratch.rglob(".tessaly-*.tmp")]
        following = self.run("panel", "127.0.0.1", "list", "1", *self.ports)
        if left:
            wrong = wrong or f"left over: {left}"
        if following[0] != DONE:
            wrong = wrong or f"the next command: {following}"
        return wrong and f"{words[0]} told {told} ({text.strip()}): {wrong}"

    def judge(self, act, told, before, new, now, kept):
        if act == "put":
            if told == DONE:
                return "not what was sent" if now != new else self.judge_history(before)
            return None if told == UNKNOWN or now in (before, new) else "neither old nor new"
        if now != before:
            return "reading has changed the panel"
        if act == "get":
            have = self.fetched.read_bytes() if self.fetched.exists() else None
            return None if have == (before if told == DONE else kept) else "not what was fetched"
        return None

    def judge_history(self, before):
        newest = json.loads(self.run("history", "--json")[1])[0]
        self.run("history", "restore", newest["id"], str(self.scratch / "newest.mac"))
        return None if (self.scratch / "newest.mac").read_bytes() == before else "the history's newest is another"


def main():
    programs, rounds = Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) > 2 else 200
    chance = random.Random(sys.argv[3] if len(sys.argv) > 3 else "1")
    if not Path(FAKED).exists():
        sys.exit("needs the package faketime")
    with tempfile.TemporaryDirectory() as scratch:
        trying = Rounds(programs, Path(scratch), chance)
        try:
            wrong = [fault for number in range(rounds) if (fault := trying.round(number + 1))]
        finally:
            os.killpg(trying.panel.pid, signal.SIGKILL)
    print("\n".join([*wrong, f"{rounds} rounds, {trying.caught} in the middle of their work: {len(wrong)} wrong"]))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
