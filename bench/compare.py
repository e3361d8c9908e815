#!/usr/bin/python3
"""Sets the benchmarks of an old build beside those of a new one: bench/compare.py OLD NEW [PATTERN].

OLD and NEW are tessaly-bench programs. Each row that both have is run ROUNDS times (of the environment, or 3) by
either, in turns, so that a machine that gets slower meanwhile slows both; the median of what was measured counts.
Beside it stand the medians of the ratios to the limit: a limit is code of the program as well, and a ratio gets larger,
too, when the limit gets faster. Fails when a row got worse by more than WORSE.
"""
import os
import re
import statistics
import subprocess
import sys

ROUNDS = int(os.environ.get("ROUNDS", "3"))
WORSE = 1.05
SECONDS = 120  # for one row once

UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0, "B": 1.0}

environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}


def output(*command):
    return subprocess.run(command, env=environment, text=True, check=True, stdout=subprocess.PIPE, timeout=SECONDS).stdout


def rows(program):
    lines = output(program, "--benchmark_list_tests=true").splitlines()
    return [line.removesuffix("/iterations:1") for line in lines if line.endswith("/iterations:1")]


def measure(program, row):
    """What the row measures, in seconds or bytes, and its ratio to the limit; nothing when it could not be measured."""
    try:
        lines = output(program, "--benchmark_filter=^" + re.sub(r"[^\w ]", ".", row) + "/iterations:1$").splitlines()
    except (subprocess.TimeoutExpired, subprocess.CalledProcessError):
        return None
    for line in lines:
        found = re.search(r"\s([\d.]+) (\w+)\s+[\d.]+ \w+\s+(\d+\.\d+)\s+\d+\.\d+\s+(?:yes|NO)$", line)
        if line.startswith(row) and found:
            return float(found[1]) * UNITS[found[2]], float(found[3])
    return None


def main(old, new, pattern="."):
    known = set(rows(old))
    worse = 0
    print(f"{'name':<72} {'ratio':>7} {'now':>7} {'measured, now:before':>21}")
    for row in rows(new):
        if row not in known or not re.search(pattern, row):
            continue
        pairs = []
        while len(pairs) < ROUNDS and (not pairs or None not in pairs[-1]):
            pairs.append((measure(old, row), measure(new, row)))
        if None in pairs[-1]:
            print(f"{row:<72} not measured", flush=True)
            continue
        (before, old_ratio), (after, new_ratio) = (
            [statistics.median(each) for each in zip(*side)] for side in zip(*pairs)
        )
        change = after / before if before else (float("inf") if after else 1.0)
        worse += change > WORSE
        print(
            f"{row:<72} {old_ratio:7.2f} {new_ratio:7.2f} {change:21.2f}{'  WORSE' if change > WORSE else ''}", flush=True
        )
    return 1 if worse else 0


if len(sys.argv) not in (3, 4):
    sys.exit(__doc__)
sys.exit(main(*sys.argv[1:]))
