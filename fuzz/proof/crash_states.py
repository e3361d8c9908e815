#!/usr/bin/python3
"""Lays out every state that the disk may hold after a cut of the power at any point of each write operation, and has
the programs open it.

usage: crash_states.py PROGRAMS [OPERATION ...]    a row for each operation; 1 when anything is wrong
"""
import os
import sys

from calls import Replay
from disk import Disk, frozen
from operations import Tried, tried_all


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
            at = f"\n    {state}" if "TESSALY_PROOF_STATES" in os.environ else ""
            wrongs.append("; ".join(wrong) + at)
    sample = "" if whole else "a sample"
    return len(running) + len(finished), [len(running), len(finished), old, new, sample], wrongs


if __name__ == "__main__":
    sys.exit(tried_all(sys.argv[1:], ["states", "finished", "old", "new", ""], "states", tried_states))
