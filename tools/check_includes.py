#!/usr/bin/python3
"""Fails when a room includes a room, or a library, that it must not know.

A folder is a layer: it may include its own headers, those of the rooms listed for it below, and the outside
libraries listed for it. Everything else in quotes or angle brackets that belongs to a room or a guarded library
is reported with file and line.
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
    "app": {"editors", "widgets", "review", "model", "link"} | BELOW_MODEL,
    "cli": {"review", "model", "link"} | BELOW_MODEL,
    "panelsim": {"xctl", "model"} | BELOW_MODEL,
}
# Headers that know no room and may be included from every one.
ANYWHERE = {"platform/ThreadAnnotations.h"}
# Libraries that are kept to some rooms: name, pattern of the included file, rooms that may include it.
GUARDED = [
    ("Qt", re.compile(r"^(Q[A-Z]\w*(/.*)?|Qt\w*/.*|ui_\w+\.h|moc_\w+\.cpp|\w+\.moc)$"), {"widgets", "editors", "app"}),
    ("curl", re.compile(r"^curl/"), {"platform"}),
    ("TinyXML", re.compile(r"^tinyxml\.h$"), {"platform", "dictionary", "model"}),
    ("JSON", re.compile(r"^nlohmann/"), {"xctl", "cli", "panelsim"}),
    # Only these rooms may depend on the operating system.
    ("system", re.compile(r"^(sys/|arpa/|netinet/|poll\.h|unistd\.h|fcntl\.h|netdb\.h|pthread\.h|windows\.h)"),
     {"platform", "xctl"}),
]
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')


def violations(root):
    for room, allowed in ROOMS.items():
        for path in sorted((root / room).rglob("*")):
            if path.suffix not in {".h", ".cpp"}:
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
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


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    found = list(violations(root))
    print("\n".join(found) if found else "include directions hold")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
