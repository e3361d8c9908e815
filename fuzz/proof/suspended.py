#!/usr/bin/python3
"""A panel and an editor that are suspended and go on later, under a clock that jumps: suspended.py [--window] PROGRAMS [ROUNDS [SEED]].

In each round tessaly-cli, or with --window the window, sends a macro to a simulated panel, fetches one or (the former)
reads the names, and at a moment by chance one of the two programs, or both, stand still for a while, as in a machine that
sleeps. Half of the editors have another year meanwhile (libfaketime of the package faketime). What is told at the end has
to be true: what is called done stands there byte for byte and what it replaced is the newest of the history; what failed
has left old or new whole; nothing is left over; and the next command works.
"""
import os
import random
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path

import disk
from operations import ALL, ONE, OWN, PANEL_MACRO, Bench, Panel, Window, macro, site_tree

PATIENCE = 60  # seconds that an editor may take after everybody is awake again
FAKED = "/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1"
DONE, FAILED, UNKNOWN = 0, 1, 3
COMMANDS = 3000  # of the macro that is sent and fetched
TWIN_ACTS = {"put": ["panel", "{panel}", "put", "1", "1", ONE], "get": ["panel", "{panel}", "get", "1", "1", ALL[1]],
             "list": ["panel", "{panel}", "list", "1"]}
THERE = ["panel={address}", "pane=B", "open=001"]
WINDOW_ACTS = {"put": [*THERE, "edit", "save"], "get": [*THERE, "pane=A", "copy=2"], "open": THERE}
TOLD_DONE = {"put": "(verified)", "get": "copied: ", "open": "opened: "}


class Twin:
    """A command of tessaly-cli."""

    acts = TWIN_ACTS
    fetches_to = {"get": ALL[1]}

    def __init__(self, bench, act, environment):
        Path(bench.host(ONE)).write_bytes(macro("Sent", COMMANDS, f"0.{time.time_ns()}"))
        self.process = subprocess.Popen(bench.words(TWIN_ACTS[act]), env=environment, text=True, start_new_session=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.sent = ONE

    def ended(self):
        return self.process.poll() is not None

    def end(self):
        """What it tells, as an exit code and in words; nothing when it does not."""
        try:
            return self.process.wait(PATIENCE), self.process.stdout.read()
        except subprocess.TimeoutExpired:
            os.killpg(self.process.pid, signal.SIGKILL)
            return None


class OfWindow:
    """An act of the window, once the acts before it are done."""

    acts = WINDOW_ACTS
    fetches_to = {"get": ALL[1], "open": OWN + "tempB.mac"}

    def __init__(self, bench, act, environment):
        self.window, self.act, self.said = Window(bench.words(["acts", *WINDOW_ACTS[act]]), environment), act, None
        self.process, self.sent = self.window.process, OWN + "tempB.mac"
        self.acting = threading.Thread(target=self.take)
        self.acting.start()

    def take(self):
        self.said = self.window.act()

    def ended(self):
        return self.said is not None

    def end(self):
        self.acting.join()
        self.window.end()
        told = DONE if TOLD_DONE[self.act] in self.said else UNKNOWN if "is not known" in self.said else FAILED
        return (told, self.said) if self.said else None


class Rounds:
    def __init__(self, programs, chance, kind):
        self.chance, self.kind, self.bench = chance, kind, (bench := Bench(programs))
        bench.lay_out(disk.frozen(site_tree()))
        bench.panel = Panel(bench)
        self.stored = Path(bench.panel.tree) / PANEL_MACRO
        self.stored.write_bytes(macro("Of the panel", COMMANDS))
        self.clock = Path(bench.folder) / "clock"
        self.caught = 0  # editors that were not through when they or their panel stood still
        self.done = dict.fromkeys(kind.acts, 0)  # acts that were told to be done, without which nothing is proved

    def environment(self, jumps):
        if not jumps:
            return self.bench.environment
        self.clock.write_text("@2026-11-26 12:00:00\n")
        return {**self.bench.environment, "LD_PRELOAD": FAKED, "FAKETIME_TIMESTAMP_FILE": str(self.clock),
                "FAKETIME_NO_CACHE": "1", "FAKETIME_DONT_FAKE_MONOTONIC": "1"}

    def suspend(self, editor, jumps):
        panel = self.bench.panel.process
        sleepers = self.chance.choice([[editor], [panel], [editor, panel]])
        time.sleep(self.chance.uniform(0, 0.12))
        for sleeper in sleepers:
            os.killpg(sleeper.pid, signal.SIGSTOP)
        if jumps:
            self.clock.write_text(f"@{self.chance.choice([1999, 2024, 2031])}-02-03 04:05:06\n")
        time.sleep(self.chance.choice([0.05, 0.3, 1, 1, 4 if self.chance.random() < 0.2 else 0.1]))
        for sleeper in sleepers:
            os.killpg(sleeper.pid, signal.SIGCONT)

    def round(self):
        """What was wrong."""
        before, act, jumps = self.stored.read_bytes(), self.chance.choice([*self.kind.acts, "put"]), self.chance.random() < 0.5
        editor = self.kind(self.bench, act, self.environment(jumps))
        new, = self.bench.bytes_of([editor.sent])
        kept, = self.bench.bytes_of([self.kind.fetches_to.get(act, ONE)])
        self.suspend(editor.process, jumps)
        self.caught += not editor.ended()
        told = editor.end()
        if told is None:
            return f"{act}: no end"
        self.done[act] += told[0] == DONE
        wrong = self.judge(act, told[0], before, new, kept)
        following = self.bench.run(TWIN_ACTS["list"])
        if left := self.bench.leftovers():
            wrong = wrong or f"left over: {left}"
        if following.returncode != DONE:
            wrong = wrong or f"the next command: {following}"
        return wrong and f"{act} told {told[0]} ({told[1].strip()}): {wrong}"

    def judge(self, act, told, before, new, kept):
        now = self.stored.read_bytes()
        if act == "put":
            if told == DONE:
                return "not what was sent" if now != new else self.judge_history(before)
            return None if told == UNKNOWN or now in (before, new) else "neither old nor new"
        if now != before:
            return "reading has changed the panel"
        if act in self.kind.fetches_to:
            have, = self.bench.bytes_of([self.kind.fetches_to[act]])
            return None if have == (before if told == DONE else kept) else "not what was fetched"
        return None

    def judge_history(self, before):
        newest = next(iter(self.bench.history().values()))
        return None if newest["bytes"] == before else "the history's newest is another"


def main(words):
    kind = OfWindow if words[:1] == ["--window"] else Twin
    words = words[kind is OfWindow:]
    rounds = int(words[1]) if len(words) > 1 else 200
    if not Path(FAKED).exists():
        sys.exit("needs the package faketime")
    trying = Rounds(words[0], random.Random(words[2] if len(words) > 2 else "1"), kind)
    try:
        wrong = [fault for _ in range(rounds) if (fault := trying.round())]
    finally:
        trying.bench.close()
    wrong += [f"{act} was never done" for act, count in trying.done.items() if count == 0]
    print("\n".join([*wrong, f"{rounds} rounds, {trying.caught} in the middle of their work: {len(wrong)} wrong"]))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
