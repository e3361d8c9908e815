#!/usr/bin/python3
"""Has each fallible call of each write operation fail once with each error that it can give, every write come short,
and every file end in the middle. Success is only said when all is there and flushed; a failure is told, leaves old or
new, and the next command works and finds nothing left over.

usage: failing_calls.py PROGRAMS [OPERATION ...]    a row for each operation; 1 when anything is wrong
"""
import collections
import os
import sys

import disk
from calls import Replay
from operations import DONE_TOLD, Tried, tried_all

ERRORS = {
    "openat": ["EACCES", "EMFILE", "EIO", "ENOMEM"], "write": ["ENOSPC", "EIO"], "pwrite64": ["ENOSPC", "EIO"],
    "fsync": ["EIO", "ENOSPC"], "ftruncate": ["EIO"], "rename": ["EIO", "ENOSPC", "EACCES"], "mkdir": ["ENOSPC", "EACCES"],
    "unlink": ["EIO", "EACCES"], "unlinkat": ["EIO", "EACCES"], "fchmod": ["EIO", "EPERM"], "fchown": ["EPERM"],
    "close": ["EIO"], "read": ["EIO"], "pread64": ["EIO"], "getdents64": ["EIO"], "newfstatat": ["EACCES", "ENOMEM"],
    "fstat": ["EIO"], "statx": ["EACCES"], "statfs": ["EIO"], "readlink": ["EIO"], "flock": ["ENOLCK"],
    "fcntl": ["ENOLCK", "EMFILE"]}
LOSS_TOLD = b"may be lost"
KINDS = "told", "warned", "unharmed"


def can_give(call):
    """The errors. The state of an open file is asked for by two names."""
    created = call.name == "openat" and "O_CREAT" in call.arguments
    return ERRORS["fstat" if "AT_EMPTY_PATH" in call.arguments else call.name] + (["ENOSPC"] if created else [])


def fallible(calls, replay):
    """Name, number among the calls of that name in its thread, and errors of each call that has to do with the site."""
    counts = collections.Counter()
    for call in calls:
        counts[call.thread, call.name] += 1
        if call.name not in ERRORS or not any(replay.inside(path) for path in call.paths()):
            continue
        yield call, counts[call.thread, call.name], can_give(call)


def exempt(call, error):
    """A folder that may not be read cannot be flushed, and is taken as it is. A close that fails is one of a file that
    was written; strace keeps the file open then, with the locks of others, which the system does not."""
    if call.name == "close":
        return not call.at.endswith(".tmp")
    return error == "EACCES" and call.name == "openat" and "O_DIRECTORY" in call.arguments


class Campaign:
    def __init__(self, bench, operation):
        self.bench, self.tried = bench, Tried(bench, operation)
        self.start = disk.frozen(self.tried.before)
        self.counts, self.wrongs = collections.Counter(), []

    def run(self):
        last = self.tried.commands[-1]
        self.bench.lay_out(self.start)
        _, calls = self.tried.run(last)
        cases = [(call, when, error) for call, when, errors in fallible(calls, Replay(disk.Disk({}), self.bench.root))
                 for error in errors if not exempt(call, error)]
        for call, when, error in cases:
            self.bench.lay_out(self.start)
            done, made = self.tried.run(last, f"{call.name}:error={error}:when={when}")
            # Of several threads each has a call of that number.
            if not any(one.injected and (exempt(one, error) or error not in can_give(one)) for one in made):
                self.judge(f"{call.name} {when} {error} {call.paths()[-1:]}", done, made)
        self.short_writes(last)
        self.ending_files(last)

    def short_writes(self, words):
        self.bench.lay_out(self.start)
        done = self.tried.run_plainly(words, {"LD_PRELOAD": os.path.join(self.bench.programs, "short-writes.so")})
        self.judge("short writes", done, None)
        if done.returncode != 0:
            self.wrongs.append(f"short writes are no reason to fail: {done.stderr}")

    def ending_files(self, words):
        """As on a full disk, a write is short first and fails then."""
        sizes = {size for path in files_of(self.tried.after) for size in (0, 1, len(path) // 2, len(path) - 1)}
        for size in sorted(sizes):
            self.bench.lay_out(self.start)
            self.judge(f"no file beyond {size} bytes", self.tried.run_plainly(words, largest=size), None)

    def judge(self, case, done, made):
        tried = self.tried
        silent = done.returncode == 0 and not done.stderr
        self.counts["told" if done.returncode else "unharmed" if silent else "warned"] += 1
        wrongs = []
        if done.returncode < 0 or (done.returncode and not done.stderr):
            wrongs.append(f"ends with {done.returncode} and says nothing")
        if done.returncode == 0 and made is not None and not tried.operation.cut_short and not tried.operation.mirrors:
            wrongs += self.unflushed(made)
        found = done.found if tried.operation.acts else tried.look()
        wrongs += done.wrongs if tried.operation.acts else []
        if done.returncode == 0 and found != tried.new and not tried.operation.cut_short:
            wrongs.append("success is said: " + tried.told(found, False))
        if done.returncode and not self.is_old_or_new(found, LOSS_TOLD in done.stderr):
            wrongs.append(tried.told(found, False))
        if done.returncode == 1 and found == tried.new != tried.stages[-2] and not tried.operation.cut_short and \
                not tried.operation.mirrors and \
                not any(words in done.stderr.decode() for words in DONE_TOLD):
            wrongs.append("a failure is said, but it is done")
        ended = done.stderr.rstrip().endswith(b"has been ended")
        if tried.operation.cut_short and found != tried.new and (silent or ended):
            wrongs.append("a batch that was cut short is not ended, and that is not told")
        wrongs += self.history_lacks(silent) + tried.judged_next()
        if wrongs:
            self.wrongs.append(f"{case}: {'; '.join(wrongs)} (exit {done.returncode}, "
                               f"{done.stderr.decode().strip()!r})")

    def is_old_or_new(self, found, loss_told):
        """With a loss that is told only the bytes count, and not what is told of unsaved changes and steps."""
        rows = found, self.tried.stages[-2], self.tried.new
        if loss_told:
            rows = [[first[1], *others] for first, *others in rows]
        return all(one in (old, new) for one, old, new in zip(*rows))

    def unflushed(self, made):
        """What is called done would survive: with nothing but what was flushed, the targets are those of now."""
        tree = disk.Disk(self.tried.began)
        replay = Replay(tree, self.bench.root)
        for call in made:
            replay.act(call)
        names = [target.replace(":", "").split("\\") for target in self.tried.operation.targets]
        return [f"success is said, but {name[-1]} is not flushed" for name in names
                if flushed(tree, name) != now(tree, name)]

    def history_lacks(self, silent):
        key = "bytes", "place", "name", "change", "size"
        rows = [[row[name] for name in key] for row in self.bench.history().values()]
        wanted = self.tried.kept_after if silent else {
            kept: row for kept, row in self.tried.known.items() if kept in self.tried.kept_before}
        return [f"the history lacks {kept}" for kept, row in wanted.items() if [row[name] for name in key] not in rows]


def flushed(tree, names):
    node = tree.root
    for name in names:
        node = node.flushed.get(name) if isinstance(node, disk.Folder) else None
    return node and node.flushed[0]


def now(tree, names):
    node = tree.find(names)
    return node and node.now()[0]


def files_of(tree):
    for below in tree.values():
        if isinstance(below, dict):
            yield from files_of(below)
        else:
            yield below[0]


def tried_calls(bench, operation):
    campaign = Campaign(bench, operation)
    campaign.run()
    counts = campaign.counts
    return sum(counts.values()), [sum(counts.values()), *(counts[key] for key in KINDS)], campaign.wrongs


if __name__ == "__main__":
    sys.exit(tried_all(sys.argv[1:], ["cases", *KINDS], "failing calls", tried_calls))
