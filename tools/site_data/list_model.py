"""Decoding lists: keyword entries with their parameters, and shorthand for writing them."""

from dataclasses import dataclass, field

SET, SET_STEP, TRIGGER, ALL, SET_TRIGGER, STEP, NONE = 1, 3, 4, 7, 5, 2, 0
OFF_ON = [(0, "Off"), (1, "On")]


@dataclass
class Parameter:
    kind: str
    text: str
    rows: list = field(default_factory=list)


@dataclass
class Entry:
    keyword: int
    sub_code: int
    short: str
    long: str = ""
    parameters: list = field(default_factory=list)
    third: int = -1  # a third byte needs a long name


def byte_items(value, width):
    return ", ".join(f"0x{byte:02x}" for byte in (value & (256 ** width - 1)).to_bytes(width, "little"))


def value_range(kind, width, low, high, default=0):
    return Parameter(kind, str(default), [byte_items(low, width), byte_items(high, width)])


def byte(low, high, default=0):
    return value_range("pt_Byte", 1, low, high, default)


def word(low, high, default=0):
    return value_range("pt_Word", 2, low, high, default)


def long(low, high, default=0):
    return value_range("pt_Long", 4, low, high, default)


def choice(name, rows, kind="pt_ByteEnum"):
    """Rows are (value, name) or (value, short name, long name)."""
    width = {"pt_ByteEnum": 1, "pt_WordEnum": 2, "pt_LongEnum": 4}[kind]
    return Parameter(kind, name, [f"{byte_items(value, width)} " + " ".join(f'"{text}"' for text in texts)
                                  for value, *texts in rows])


def analog(name, high=1023, low_text="0 %", high_text="100 %"):
    return Parameter("pt_Analog", name, [f'{byte_items(0, 2)} "{low_text}"', f'{byte_items(high, 2)} "{high_text}"'])


def analog_bi(name, low=0, neutral=512, high=1023, texts=("-100 %", "0 %", "+100 %")):
    return Parameter("pt_AnalogBi", name,
                     [f'{byte_items(value, 2)} "{text}"' for value, text in zip((low, neutral, high), texts)])


def plain(kind, name):
    return Parameter(kind, name)


def source(name="Source"):
    """The last parameter of its entry: the source-hold byte may follow it."""
    return plain("pt_Input", name)


def timecode(name="Timecode"):
    return plain("pt_Timecode", name)


def switches(first, *names):
    return [Entry(first + i, ALL, name.replace(" ", ""), name, [choice("State", OFF_ON)])
            for i, name in enumerate(names)]


def triggers(first, *names):
    return [Entry(first + i, TRIGGER, name) for i, name in enumerate(names)]


def levels(first, *names):
    return [Entry(first + i, SET_STEP, name.replace(" ", ""), name, [analog("Level")]) for i, name in enumerate(names)]


def positions(first, *names):
    return [Entry(first + i, SET_STEP, name.replace(" ", ""), name, [analog_bi("Position")])
            for i, name in enumerate(names)]


def selected(keyword, short, long_name, parameter_name, rows, parameter, sub_code=SET_STEP):
    """One entry for each row, all with the same keyword: the enumeration's value tells them apart."""
    return [Entry(keyword, sub_code, f"{short}{text}", f"{long_name} {text}",
                  [choice(parameter_name, [(value, text)]), parameter]) for value, text in rows]


def stepping(keyword, short, long_name):
    """A list that is walked: two entries share the keyword, so that stepping shows as toggling."""
    return [Entry(keyword, STEP, short, f"{long_name} Step", [choice("Step", [(1, "Next"), (0xFF, "Previous")])]),
            Entry(keyword, SET, short, f"{long_name} Select", [choice("Select", [(0x10, "First"), (0x20, "Last")])])]
