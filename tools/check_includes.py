#!/usr/bin/python3
"""Fails when a room includes a room, or a library, that it must not know, or stacks its headers too high.

A folder is a layer: it may include its own headers, those of the rooms listed for it below, and the outside
libraries listed for it, and ask which system it runs on only where that is its business. Everything else in quotes or angle brackets that belongs to a room or a guarded library
is reported with file and line; so is a file whose room's own headers, one included by the other, stand higher than
DEEPEST, a circle of headers, and two types of one name.
"""
import re
import sys
from pathlib import Path

BELOW_MODEL = {"classic", "values", "dictionary", "platform"}
ROOMS = {
    "platform": set(),
    "xctl": set(),
    "dictionary": {"platform"},
    "values": {"dictionary", "platform"},
    "classic": {"values", "dictionary", "platform"},
    "model": BELOW_MODEL,
    "link": {"xctl", "platform"},
    "review": {"model", "link"} | BELOW_MODEL,
    "widgets": {"platform"},
    "editors": {"widgets", "model", "link"} | BELOW_MODEL,
    "windows": {"widgets", "review", "model", "link"} | BELOW_MODEL,
    "app": {"windows", "editors", "widgets", "review", "model", "link"} | BELOW_MODEL,
    "cli": {"review", "model", "link"} | BELOW_MODEL,
    "panelsim": {"xctl", "model"} | BELOW_MODEL,
}
# Headers that know no room and may be included from every one.
ANYWHERE = {"platform/ThreadAnnotations.h"}
SYSTEM_ROOMS = {"platform", "xctl"}
# Libraries that are kept to some rooms: name, pattern of the included file, rooms that may include it.
GUARDED = [
    ("Qt", re.compile(r"^(Q[A-Z]\w*(/.*)?|Qt\w*/.*|ui_\w+\.h|moc_\w+\.cpp|\w+\.moc)$"), {"widgets", "editors", "windows", "app"}),
    ("curl", re.compile(r"^curl/"), {"platform"}),
    ("libzip", re.compile(r"^zip\.h$"), {"platform"}),
    ("libharu", re.compile(r"^hpdf"), {"platform"}),
    ("OpenSSL", re.compile(r"^openssl/"), {"platform"}),
    ("TinyXML", re.compile(r"^tinyxml\.h$"), {"platform", "dictionary", "model"}),
    ("JSON", re.compile(r"^nlohmann/"), {"xctl", "review", "cli", "panelsim"}),
    # Only these rooms may depend on the operating system.
    ("system", re.compile(r"^(sys/|linux/|arpa/|netinet/|(poll|unistd|fcntl|netdb|pthread|dlfcn|dirent|pwd|signal|spawn|"
                          r"locale|io|windows|winsock2|ws2tcpip)\.h)"), SYSTEM_ROOMS),
]
SYSTEM_NAME = re.compile(r"\b(_WIN32|_WIN64|WIN32|__MINGW32__|__linux__|__unix__|__APPLE__|__GLIBC__|Q_OS_\w+)\b")
DEEPEST = 8  # files of one room in a row, each included by the one before
TYPE = re.compile(r"^(?:class|struct|enum class)\s+(?:\w+\([^)]*\)\s+)?(\w+)(?: final)?\s*(?::[^:;]|\{)", re.M)
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')


def violations(root):
    for room, allowed in ROOMS.items():
        for path in sorted((root / room).rglob("*")):
            if path.suffix not in {".h", ".cpp"}:
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                asked = SYSTEM_NAME.search(line)
                if asked and room not in SYSTEM_ROOMS:
                    yield f"{path.relative_to(root)}:{number}: {room} may not know the system ({asked.group()})"
                found = INCLUDE.match(line)
                if not found:
                    continue
                name = found.group(1)
                other = name.split("/")[0]
                strange = other in ROOMS and other != room and other not in allowed and name not in ANYWHERE
                if "/" in name and strange:
                    yield f"{path.relative_to(root)}:{number}: {room} may not include {name}"
                for library, pattern, users in GUARDED:
                    if pattern.match(name) and room not in users:
                        yield f"{path.relative_to(root)}:{number}: {room} may not use {library} ({name})"


def stacks(root):
    """The deepest stack of files of its own room that each file begins."""
    found = {}

    def stack(name):
        if name in found:
            if not found[name]:
                raise RecursionError(f"{name} includes itself by way of others")
            return found[name]
        found[name] = []
        lines = (root / name).read_text(encoding="utf-8").splitlines()
        below = [match.group(1) for match in map(INCLUDE.match, lines) if match]
        below = [stack(other) for other in below if (root / other).is_file() and other.split("/")[0] in ROOMS]
        own = [other for other in below if other[0].split("/")[0] == name.split("/")[0]]
        found[name] = [name] + max(own, key=len, default=[])
        return found[name]

    for room in ROOMS:
        for path in sorted((root / room).rglob("*")):
            if path.suffix in {".h", ".cpp"}:
                yield stack(str(path.relative_to(root)))


def heights(root):
    try:
        for files in stacks(root):
            if len(files) > DEEPEST:
                yield f"{files[0]}: {len(files)} files deep, {DEEPEST} at most: {' > '.join(files)}"
    except RecursionError as circle:
        yield str(circle)


def named_twice(root):
    """All rooms share a namespace, and two types of one name in one program are one of them at random."""
    found = {}
    for room in ROOMS:
        for path in sorted((root / room).rglob("*.h")):
            for name in TYPE.findall(path.read_text(encoding="utf-8")):
                found.setdefault(name, set()).add(str(path.relative_to(root)))
    for name, paths in found.items():
        if len(paths) > 1:
            yield f"{name} stands in {' and in '.join(sorted(paths))}"


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    found = [*violations(root), *heights(root), *named_twice(root)]
    print("\n".join(found) if found else "include directions hold")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
