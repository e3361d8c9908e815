#!/usr/bin/python3
"""Which files of one folder can be compiled as one: those that share no file-local name.

    tools/source_groups.py FILE...    prints "GROUP FILE" of each, for cmake/Grouped.cmake
"""
import re
import sys
from functools import lru_cache
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MOST_FILES = 12  # in a group
# Names at the left margin that two files in one compilation could both define.
LOCAL_NAME = re.compile(
    r"^(?:static )?(?:(?:class|struct|enum class|enum) (\w+)|[A-Za-z][\w:<>,&* ]*[ &*](\w+)\()", re.M)
ALIAS = re.compile(r"^using (\w+) = ([^;]*);", re.M)  # may be said twice, where it says the same
CONSTANTS = re.compile(r"^(?:static )?(?:constexpr|inline|const)\b[^;]*", re.M)
CONSTANT = re.compile(r"\bk[A-Z]\w*")
# Names of which nobody here sees whose they may be: only files that have the same ones go together.
FOREIGN_NAMES = re.compile(r"^using (?:enum|namespace) (?!std::\w+_literals;)[^;]*;", re.M)
NAMESPACE = re.compile(r"^namespace ([\w:]+) {", re.M)
# The tests' own headers define names like those of a test.
SHARED = re.compile(r'^#include "(tests/.*)"', re.M)


@lru_cache(maxsize=None)
def local_names(path):
    """What each is: one of this file, or the other name that it stands for."""
    text = path.read_text(encoding="utf-8")
    found = {name for match in LOCAL_NAME.findall(text) for name in match if name}
    found |= {name for line in CONSTANTS.findall(text) for name in CONSTANT.findall(line)}
    spaces = set(NAMESPACE.findall(text))
    space = tuple(spaces.pop().split("::")) if len(spaces) == 1 else ()
    return {(space, name): what
            for name, what in {**dict.fromkeys(found, str(path)), **dict(ALIAS.findall(text))}.items()}


@lru_cache(maxsize=None)
def shared_names(path):
    names = {}
    for header in SHARED.findall(path.read_text(encoding="utf-8")):
        if (ROOT / header).exists():
            names |= {**local_names(ROOT / header), **shared_names(ROOT / header)}
    return names


def sees(one, other):
    """Whether what stands in one namespace may be seen from the other: they are the same, or one is around the other."""
    return all(a == b for a, b in zip(one, other))


def agree(some, others):
    named = {}
    for (space, name), what in others.items():
        named.setdefault(name, []).append((space, what))
    return all(what == other for (space, name), what in some.items()
               for around, other in named.get(name, []) if sees(space, around))


class Group:
    def __init__(self, path):
        self.files, self.own, self.shared = [path], dict(local_names(path)), dict(shared_names(path))
        self.foreign = set(FOREIGN_NAMES.findall(path.read_text(encoding="utf-8")))

    def takes(self, other):
        apart = agree(self.own, other.own) and agree(self.own, other.shared) and agree(self.shared, other.own)
        return apart and self.foreign == other.foreign and len(self.files) < MOST_FILES

    def add(self, other):
        self.files += other.files
        self.own |= other.own
        self.shared |= other.shared


def groups_of(files):
    groups = []
    for path in files:
        alone = Group(path)
        group = next((group for group in groups if group.takes(alone)), None)
        if group:
            group.add(alone)
        else:
            groups.append(alone)
    return [group.files for group in groups]


if __name__ == "__main__":
    for number, group in enumerate(groups_of([Path(name) for name in sys.argv[1:]])):
        for path in group:
            print(number, path)
