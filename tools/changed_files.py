#!/usr/bin/python3
"""What a check that goes by changes has to look at.

    tools/changed_files.py REVISION FOLDER...    prints the sources of these folders that differ from it
"""
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


def lines_of(*arguments):
    """What git says; nothing found is 1 of some of its commands."""
    done = subprocess.run(["git", "-C", ROOT, *arguments], check=False, text=True, stdout=subprocess.PIPE)
    if done.returncode > 1:
        sys.exit(done.returncode)
    return done.stdout.splitlines()


def changed_since(revision):
    """The files that differ from a revision; for a header the file beside it, or one of its room that includes it."""
    changed = set()
    for line in lines_of("diff", "--name-only", revision):
        path = ROOT / line
        changed.add(path)
        if path.suffix == ".h" and path.with_suffix(".cpp").exists():
            changed.add(path.with_suffix(".cpp"))
        elif path.suffix == ".h":
            users = lines_of("grep", "-lF", f'#include "{line}"', "--", f"{path.parent.relative_to(ROOT)}/*.cpp")
            changed |= {ROOT / user for user in users[:1]}
    return {path for path in changed if path.exists()}


if __name__ == "__main__":
    folders = [ROOT / folder for folder in sys.argv[2:]]
    for source in sorted(changed_since(sys.argv[1])):
        if source.suffix == ".cpp" and any(source.is_relative_to(folder) for folder in folders):
            print(source.relative_to(ROOT))
