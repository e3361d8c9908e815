"""How a built tree compiles each file: by itself, or as one of a group (cmake/Grouped.cmake)."""
import json
import re
import shlex
from dataclasses import dataclass
from pathlib import Path

MEMBER = re.compile(r'^#include "(.*)"$', re.M)


@dataclass(frozen=True)
class Unit:
    """One compilation."""
    source: Path  # the file itself, or the group's, which includes it
    words: tuple  # of the command, the launcher's first
    folder: str  # in which it runs
    grouped: bool


def units_of(build):
    """The unit of each file that the tree compiles."""
    units = {}
    for entry in json.loads((Path(build) / "compile_commands.json").read_text(encoding="utf-8")):
        source = Path(entry["file"])
        grouped = source.parent.name == "Unity"
        unit = Unit(source, tuple(shlex.split(entry["command"])), entry["directory"], grouped)
        members = MEMBER.findall(source.read_text(encoding="utf-8")) if grouped else [source]
        units.update({Path(member): unit for member in members})
    return units
