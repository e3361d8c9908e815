#!/usr/bin/python3
"""Reads what `llvm-cov export -summary-only` has printed and tells of each room how many of its lines were run:
coverage.py GOAL. Exit 1 below GOAL percent over all."""
import json
import sys
from collections import defaultdict
from pathlib import Path

ROOMS = ["platform", "xctl", "dictionary", "values", "classic", "model", "link", "review", "panelsim", "cli", "widgets",
         "editors", "windows", "app"]
ROOT = Path(__file__).resolve().parent.parent
NAMED = 15  # files


def main():
    goal = float(sys.argv[1])
    rooms, files = defaultdict(lambda: [0, 0]), []
    for file in json.load(sys.stdin)["data"][0]["files"]:
        path = Path(file["filename"]).resolve()
        if not path.is_relative_to(ROOT) or path.relative_to(ROOT).parts[0] not in ROOMS:
            continue
        lines = file["summary"]["lines"]
        for total in (rooms[path.relative_to(ROOT).parts[0]], rooms["all"]):
            total[0] += lines["covered"]
            total[1] += lines["count"]
        files.append((lines["count"] - lines["covered"], path.relative_to(ROOT)))
    for room in [*ROOMS, "all"]:
        covered, count = rooms[room]
        if count:
            print(f"{room + ':':12} {100 * covered / count:5.1f} % of {count} lines")
    for missed, path in sorted(files, reverse=True)[:NAMED]:
        print(f"  {missed} lines not run: {path}")
    covered, count = rooms["all"]
    sys.exit(0 if count and 100 * covered >= goal * count else f"coverage: below {goal} %")


if __name__ == "__main__":
    main()
