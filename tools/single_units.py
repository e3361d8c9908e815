#!/usr/bin/python3
"""Compiles the files of grouped rooms by themselves, making nothing: another file of its group may have what one misses.

    tools/single_units.py BUILD [--changed REVISION]    only those that differ from REVISION, or whose header does
"""
import argparse
import os
import subprocess
import sys
from multiprocessing.pool import ThreadPool
from pathlib import Path

from build_units import units_of

ROOT = Path(__file__).resolve().parent.parent
NO_ROOMS = {"tests", "bench", "fuzz", "build"}


def compiles(job):
    path, unit = job
    words = list(unit.words)
    words[words.index("-c") + 1] = str(path)
    place = words.index("-o")
    return subprocess.run(words[:place] + words[place + 2:] + ["-fsyntax-only", "-Wshadow"], cwd=unit.folder,
                          check=False).returncode == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=Path)
    parser.add_argument("--changed", metavar="REVISION")
    arguments = parser.parse_args()
    jobs = {path: unit for path, unit in units_of(arguments.build.resolve()).items()
            if unit.grouped and path.is_relative_to(ROOT) and path.relative_to(ROOT).parts[0] not in NO_ROOMS}
    if arguments.changed:
        lines = subprocess.run(["git", "-C", ROOT, "diff", "--name-only", arguments.changed], check=True, text=True,
                               stdout=subprocess.PIPE).stdout.splitlines()
        changed = {(ROOT / line).with_suffix(".cpp") for line in lines}
        jobs = {path: unit for path, unit in jobs.items() if path in changed}
    with ThreadPool(os.cpu_count()) as pool:
        good = pool.map(compiles, jobs.items())
    print(f"single files: {sum(good)} of {len(good)} compile")
    return 0 if all(good) else 1


sys.exit(main())
