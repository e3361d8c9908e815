#!/usr/bin/python3
"""Sets the benchmarks of an old build beside those of a new one: bench/compare.py OLD NEW [PATTERN].

OLD and NEW are tessaly-bench programs. Each row that both have is run ROUNDS times by either, in turns, so that a
machine that gets slower meanwhile slows both; the median of its ratios to its limit counts. Fails when a row got worse
by more than WORSE.
"""
import os
import re
import statistics
import subprocess
import sys

ROUNDS = 3
WORSE = 1.05
SECONDS = 600  # for one row once

environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}


def output(*command):
    return subprocess.run(command, env=environment, text=True, check=True, stdout=subprocess.PIPE, timeout=SECONDS).stdout


def rows(program):
    lines = output(program, "--benchmark_list_tests=true").splitlines()
    return [line.removesuffix("/iterations:1") for line in lines if line.endswith("/iterations:1")]


def ratio(program, row):
    """Of the row to its limit; nothing when it could not be measured."""
    for line in output(program, "--benchmark_filter=^" + re.sub(r"[^\w ]", ".", row) + "/iterations:1$").splitlines():
        if line.startswith(row) and (found := re.search(r"\s(\d+\.\d+)\s+\d+\.\d+\s+(?:yes|NO)$", line)):
            return float(found[1])
    return None


def main(old, new, pattern="."):
    known = set(rows(old))
    worse = 0
    print(f"{'name':<72} {'old':>7} {'new':>7} {'new/old':>8}")
    for row in rows(new):
        if row not in known or not re.search(pattern, row):
            continue
        pairs = [(ratio(old, row), ratio(new, row)) for _ in range(ROUNDS)]
        if any(each is None for pair in pairs for each in pair):
            print(f"{row:<72} not measured")
            continue
        before, after = (statistics.median(side) for side in zip(*pairs))
        change = after / before if before else 1.0
        worse += change > WORSE
        print(f"{row:<72} {before:7.2f} {after:7.2f} {change:8.2f}{'  WORSE' if change > WORSE else ''}", flush=True)
    return 1 if worse else 0


if len(sys.argv) not in (3, 4):
    sys.exit(__doc__)
sys.exit(main(*sys.argv[1:]))
