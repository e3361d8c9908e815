"""Macro files: recording commands against the dictionary, and the XML."""

import random
from xml.sax.saxutils import quoteattr

from .classic import command_text
from .dictionary import function_table, functions_of_group

KIND_ORDER = ["enum", "int", "float", "input", "timecode"]  # the order of writing


def packed_timecode(hours, minutes, seconds, frames, drop=False):
    byte = lambda value: (value // 10 << 4) | value % 10
    return byte(frames) | byte(seconds) << 8 | byte(minutes) << 16 | byte(hours) << 24 | (drop << 30)


def stored_value(function, parameter, shown):
    """The panel value of what an engineer would type: percent, degrees, a choice's text, (h, m, s, f)."""
    if parameter.kind == "enum":
        return next(value for value, text in parameter.values if str(shown) in (value, text))
    if parameter.kind == "input":
        return str(shown)
    if parameter.kind == "timecode":
        return str(packed_timecode(*shown))
    if parameter.kind == "float" and function.incremental:
        return str(max(-2048, min(2047, int(shown * 1024 + 0.5))))
    low, high = parameter.number("min"), parameter.number("max")
    low_shown, high_shown = parameter.number("minDisp"), parameter.number("maxDisp")
    if parameter.kind == "int":
        if parameter.attributes.get("scaler") != "yes":
            return str(shown)
        return str(int((high - low) * (shown - low_shown) / (high_shown - low_shown) + low + 0.5))
    if low == high:
        return f"{shown:g}"
    return f"{(high - low) * (shown - low_shown) / (high_shown - low_shown) + low:f}"


def typical_value(function, parameter, rnd):
    """Some value in range, as it would be typed."""
    if parameter.kind == "enum":
        return rnd.choice(parameter.values)[0]
    if parameter.kind == "input":
        return rnd.choice([rnd.randint(1, 96), 144, 153, 160, 129, 137, 224])
    if parameter.kind == "timecode":
        short = any(word in function.name for word in ("DURATION", "DELAY", "DIMMER"))
        return (0, 0, rnd.randint(0, 9), rnd.choice([0, 5, 12])) if short else \
            (rnd.choice([10, 11, 20]), rnd.randint(0, 59), rnd.randint(0, 59), rnd.randint(0, 24))
    low, high = parameter.number("minDisp"), parameter.number("maxDisp")
    if parameter.kind == "int":
        return rnd.randint(int(low), int(min(high, low + 100)))
    if low == high or parameter.attributes.get("type") is None:
        return rnd.choice([-2, -1, -0.5, 0.5, 1, 2])
    return round(2 * rnd.uniform(low, high)) / 2


class Macro:
    """A macro being recorded: the call methods append commands."""

    def __init__(self, name, encoding="ISO-8859-1"):
        self.name = name
        self.encoding = encoding  # of the declaration; "" writes a file without declaration
        self.workplace = 1
        self.mainframe = 1
        self.commands = []  # (fid, workplace, [(parameter, value)])

    def call(self, name, *values, **named):
        """A mainframe function. Values are as shown, for the parameters in the order of writing, or by name."""
        self._append(f"QMF{self.mainframe}", name, values, named)

    def panel(self, name, *values, **named):
        self._append("PANEL", name, values, named)

    def _append(self, destination, name, values, named):
        function = function_table()[name]
        ordered = sorted(function.template.parameters, key=lambda p: KIND_ORDER.index(p.kind))
        given = dict(named)
        mandatory = [p for p in ordered if p.name not in given and not p.optional]
        if len(mandatory) != len(values):
            raise ValueError(f"{name} takes {[p.name for p in mandatory]}")
        given.update({p.name: value for p, value in zip(mandatory, values)})
        stored = [(p.name, stored_value(function, p, given.pop(p.name))) for p in ordered if p.name in given]
        if given:
            raise ValueError(f"{name} has no {sorted(given)}")
        self.commands.append((f"{destination}.{name}", self.workplace, stored))

    def classic(self, action, cd, co, kw, *parameters):
        text = command_text(action, cd, co, kw, bytes(parameters))
        self.commands.append((f"QMF{self.mainframe}.NCSCOMMAND", 1, [("CMD", text)]))

    def snapshot(self, *destinations):
        """Every value of some destinations, as the multiple command dialog inserts them."""
        rnd = random.Random(self.name)
        for destination in destinations:
            for function in functions_of_group(destination):
                if not function.template.parameters:
                    continue
                named = {p.name: typical_value(function, p, rnd) for p in function.template.parameters}
                self.call(function.name, **named)

    def xml(self):
        lines = [f'<?xml version="1.0" encoding="{self.encoding}" ?>'] if self.encoding else []
        lines.append(f"<macro name={quoteattr(self.name)}>")
        lines.append("    <data>" if self.commands else "    <data />")
        for fid, workplace, parameters in self.commands:
            head = f'        <cmd fid={quoteattr(fid)} workplace="{workplace}" group="0" module="0" widget="0"'
            if not parameters:
                lines.append(head + " />")
                continue
            lines.append(head + ">")
            lines += [f"            <param name={quoteattr(n)} value={quoteattr(v)} />" for n, v in parameters]
            lines.append("        </cmd>")
        lines += ["    </data>"] if self.commands else []
        lines += ["</macro>", ""]
        return "\n".join(lines).encode("utf-8" if self.encoding == "UTF-8" else "cp1252")
