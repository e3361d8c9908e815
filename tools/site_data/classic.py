"""Classic commands: byte and text form, the menu's codes, decoding lists read back and commands described.

The formats are told in docs/classic-commands.md and docs/decoding-list.md.
"""

import re
from dataclasses import dataclass, field

SET, STEP, READ, TRIGGER = 0x20, 0x40, 0x60, 0xE0

ME_SUBGROUPS = [(1, 1), (32, 35), (16, 17), (8, 8), (64, 64), (14, 14), (48, 48), (2, 2), (161, 164), (177, 180),
                (160, 160)]
GROUPS = {  # device code -> ranges of command codes
    0: ME_SUBGROUPS + [(36, 38)], 1: ME_SUBGROUPS + [(3, 3)], 2: ME_SUBGROUPS + [(3, 3)], 3: ME_SUBGROUPS + [(3, 3)],
    4: [(1, 1), (32, 35), (8, 8), (64, 64), (14, 14)],
    18: [(1, 3)], 19: [(1, 2), (16, 19), (24, 24), (32, 32)], 20: [(1, 1), (2, 2), (4, 4)], 30: [(0, 0)],
    29: [(1, 4), (64, 95), (16, 21), (32, 32)], 17: [(1, 96)], 16: [(1, 48), (145, 159), (144, 144)], 37: [(1, 38)],
    28: [(1, 1)], 32: [(1, 1)], 33: [(1, 5), (16, 16)], 34: [(1, 2), (16, 16)], 67: [(1, 15)], 27: [(1, 1)],
    21: [(1, 32), (129, 134)], 22: [(1, 128), (129, 134)], 23: [(1, 15), (33, 38)], 24: [(0, 0), (1, 4)],
    35: [(0, 0), (1, 4)], 25: [(1, 4), (33, 42)], 65: [(1, 1)], 26: [(1, 1), (33, 33)], 31: [(1, 4)], 68: [(1, 1)],
    66: [(1, 1)], 69: [(1, 1)], 74: [(1, 30)],
}
TYPES = {"pt_Byte": 1, "pt_ByteEnum": 1, "pt_Word": 2, "pt_WordEnum": 2, "pt_Long": 4, "pt_LongEnum": 4,
         "pt_Input": 1, "pt_Analog": 2, "pt_AnalogBi": 2, "pt_String": 0, "pt_Timecode": 4, "pt_Clipname": 0}


def list_path(cd, co):
    return f"Cd-0x{cd:02x}/Cd-0x{cd:02x}-Co-0x{co:02x}.ini"


def list_device_code(cd):
    return 0 if 1 <= cd <= 4 else cd


def in_group_table(cd, co):
    return any(low <= co <= high for low, high in GROUPS.get(cd, []))


def command_text(action, cd, co, kw, parameters=b""):
    """27 parameter bytes at most: from 28 on the text cannot be read back."""
    if len(parameters) > 27:
        raise ValueError("too many parameter bytes")
    data = bytes([action + 3 + len(parameters), cd, co, kw]) + parameters
    return "".join(f"{byte:02x} " for byte in data)


def word(value):
    return list((value & 0xFFFF).to_bytes(2, "little"))


def long_word(value):
    return list((value & 0xFFFFFFFF).to_bytes(4, "little"))


@dataclass
class ReadParameter:
    kind: str
    text: str
    rows: list = field(default_factory=list)  # (value, texts) of its value lines


@dataclass
class ReadEntry:
    keyword: int
    sub_code: int
    names: list
    parameters: list = field(default_factory=list)


def read_list(text, cd, co):
    """Entries of a list; anything that the program would not take is an error here."""
    lines = [line.strip(" \t") for line in re.split(r"[\r\n]+", text) if line.strip()]
    if len(lines) > 1000 or not re.fullmatch(rf"CD=0x{cd:02x}", lines[0]):
        raise ValueError(f"bad head: {lines[0]}")
    bounds = [int(item, 16) for item in re.findall(r"0x([0-9a-f]{2})", lines[1])]
    if not lines[1].startswith("CO") or (co != bounds[0] if len(bounds) == 1 else co > min(bounds)):
        raise ValueError(f"bad command code line: {lines[1]}")
    entries = []
    for line in lines[2:]:
        texts = re.findall(r'"([^"]*)"', line)
        items = [int(item, 16) for item in re.findall(r"0x([0-9a-f]{2})", re.sub(r'"[^"]*"', "", line))]
        if line[0] == "[":
            entries.append(ReadEntry(items[0], items[1], texts))
        elif line[0] == "p":
            entries[-1].parameters.append(ReadParameter(line.split()[0], texts[0]))
        elif line[0] == ":":
            parameter = entries[-1].parameters[-1]
            if len(items) != TYPES[parameter.kind] or parameter.kind in ("pt_Input", "pt_Timecode"):
                raise ValueError(f"bad value line: {line}")
            parameter.rows.append((int.from_bytes(bytes(items), "little"), texts))
    if not entries or any(len(entry.parameters) > 15 for entry in entries):
        raise ValueError("no entry, or one with too many parameters")
    return entries


def fits(entry, parameters):
    """Several entries of a keyword are told apart by their enumerated parameters."""
    position = 0
    for parameter in entry.parameters:
        width = TYPES[parameter.kind]
        value = parameters[position:position + width]
        if len(value) < width or parameter.kind == "pt_Byte":
            return False
        if parameter.kind.endswith("Enum") and int.from_bytes(value, "little") not in [v for v, _ in parameter.rows]:
            return False
        position += width
    return True


def find_entry(entries, keyword, parameters):
    matching = [entry for entry in entries if entry.keyword == keyword]
    if len(matching) > 1:
        matching = [entry for entry in matching if fits(entry, parameters)]
    return matching[0] if matching else None


def complete(entry, parameters):
    """The bytes hold a value for every parameter."""
    needed = sum(TYPES[p.kind] for p in entry.parameters)
    open_ended = any(p.kind in ("pt_String", "pt_Clipname") for p in entry.parameters)
    return len(parameters) > needed if open_ended else len(parameters) >= needed


def problem_of(text, lists):
    """What is wrong with a command's text, or nothing. `lists` maps (cd, co) to entries."""
    data = bytes.fromhex(text)
    if not text.endswith(" ") or len(data) < 4 or data[0] & 31 != len(data) - 1:
        return "does not decode"
    entries = lists.get((list_device_code(data[1]), data[2]))
    if entries is None or not in_group_table(data[1], data[2]):
        return "no decoding list"
    entry = find_entry(entries, data[3], data[4:])
    if entry is None:
        return "no keyword entry"
    allowed = {SET: 1, STEP: 2, TRIGGER: 4}.get(data[0] & 0xE0, 0)
    if not entry.sub_code & allowed:
        return "action not allowed"
    if not complete(entry, data[4:]):
        return "not enough parameters"
    return None
