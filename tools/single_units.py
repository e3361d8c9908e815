#!/usr/bin/python3
"""Compiles the files of grouped rooms by themselves, making nothing: another file of its group may have what one misses.

    tools/single_units.py BUILD [--changed REVISION] [--budget SECONDS]

With --changed only those that differ from REVISION, or whose header does; with --budget as many as the time allows.
"""
import argparse
import os
import random
import subprocess
import sys
import time
from multiprocessing.pool import ThreadPool
from pathlib import Path

from build_units import units_of
from changed_files import ROOT, changed_since

NO_ROOMS = {"tests", "bench", "fuzz", "build"}


def compiles(path, unit):
    words = list(unit.words)
    words[words.index("-c") + 1] = str(path)
    place = words.index("-o")
    return subprocess.run(words[:place] + words[place + 2:] + ["-fsyntax-only", "-Wshadow"], cwd=unit.folder,
                          check=False).returncode == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=Path)
    parser.add_argument("--changed", metavar="REVISION")
    parser.add_argument("--budget", type=float, default=float("inf"))
    arguments = parser.parse_args()
    end = time.monotonic() + arguments.budget
    jobs = {path: unit for path, unit in units_of(arguments.build.resolve()).items()
            if unit.grouped and path.is_relative_to(ROOT) and path.relative_to(ROOT).parts[0] not in NO_ROOMS}
    if arguments.changed:
        changed = changed_since(arguments.changed)
        jobs = {path: unit for path, unit in jobs.items() if path in changed}
    with ThreadPool(os.cpu_count()) as pool:
        done = pool.map(lambda job: compiles(*job) if time.monotonic() < end else None,
                        random.sample(list(jobs.items()), len(jobs)), chunksize=1)
    print(f"single files: {done.count(True)} compile, {done.count(False)} do not, {done.count(None)} were not tried")
    return 1 if False in done else 0


sys.exit(main())
