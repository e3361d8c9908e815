#!/usr/bin/python3
"""Lays out every state that the disk may hold after a cut of the power at any point of each write operation, and has
the programs open it.

usage: crash_states.py PROGRAMS [OPERATION ...]    a row for each operation; 1 when anything is wrong
"""
import os
import sys
import time

from calls import Replay, may_trace
from disk import Disk, frozen
from operations import OPERATIONS, Bench, Tried

MOST_TOLD = 5
SKIPPED = 77  # to the tests


def states_of(tried):
    """Each state that differs, and whether the operation had said that it is done; whether these are all."""
    disk = Disk(tried.tree)
    replay = Replay(disk, tried.bench.root)
    running, whole = {}, True
    for call in [None, *tried.calls]:
        if call is None or replay.act(call):
            found, all_of_them = disk.states()
            running.update(dict.fromkeys(found))
            whole = whole and all_of_them
    assert frozen(disk.tree()) == frozen(tried.after), "the calls do not lead to what is there"
    finished, all_of_them = disk.states()
    return [(state, False) for state in running], [(state, True) for state in finished], whole and all_of_them


def tried_states(bench, operation):
    tried = Tried(bench, operation)
    running, finished, whole = states_of(tried)
    old = new = 0
    wrongs = []
    for state, is_finished in running + finished:
        bench.lay_out(state)
        found, wrong = tried.judged(is_finished)
        old += found == tried.old
        new += found == tried.new
        if wrong:
            wrongs.append((wrong, state))
    print(f"{operation.name:24}{len(running):8}{len(finished):10}{old:8}{new:8}{len(wrongs):8}"
          f"{'' if whole else '  a sample'}", flush=True)
    return len(running) + len(finished), wrongs


def main(programs, names):
    if not may_trace():
        print("strace may not trace here")
        return SKIPPED
    bench = Bench(programs)
    print(f"{'operation':24}{'states':>8}{'finished':>10}{'old':>8}{'new':>8}{'wrong':>8}")
    count, wrong, began = 0, 0, time.monotonic()
    for operation in OPERATIONS:
        if names and operation.name not in names:
            continue
        states, wrongs = tried_states(bench, operation)
        count += states
        wrong += len(wrongs)
        for texts, state in wrongs[:MOST_TOLD]:
            print("  WRONG: " + "; ".join(texts))
            if os.environ.get("TESSALY_PROOF_STATES"):
                print("    ", state)
    bench.close()
    print(f"{count} states in {time.monotonic() - began:.0f} s, {wrong} wrong")
    return 1 if wrong or not count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]) if len(sys.argv) > 1 else 2)
