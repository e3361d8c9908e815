"""Interface description files: records, shorthand for writing templates, XML and expansion.

The format is told in docs/interface-description.md.
"""

import itertools
import re
from dataclasses import dataclass, field
from xml.sax.saxutils import quoteattr

OFF_ON = [("0", "Off"), ("1", "On")]


@dataclass
class Parameter:
    kind: str  # enum, int, float, input, timecode
    name: str
    description: str
    optional: bool = False
    attributes: dict = field(default_factory=dict)
    values: list = field(default_factory=list)  # (value, description) of an enum

    def number(self, key):
        return float(self.attributes.get(key, 0))


@dataclass
class Template:
    name: str
    description: str
    group: str
    sid: str
    parameters: list
    long_desc: str = ""


@dataclass
class InterfaceFile:
    """Families are (fidseg, display) lists; an indexed one also keeps its numbers for the XML."""

    source: int
    indexed: dict = field(default_factory=dict)
    enums: dict = field(default_factory=dict)
    aliases: dict = field(default_factory=dict)  # heading -> [(segm, descrShort, descrLong, search2)]
    templates: list = field(default_factory=list)

    def add_indexed(self, name, fidseg, display, low, high, offset=0):
        self.indexed[name] = (fidseg, display, low, high, offset)

    def add_enum(self, name, members):
        self.enums[name] = members

    def add(self, name, description, group, *parameters, sid=None, long_desc=""):
        """One template. The current value is named like the function without its closing SET or INC."""
        if sid is None:
            sid = re.sub(r"\.(SET|\$SETINC)$", "", name) if parameters else ""
        self.templates.append(Template(name, description, group, sid, list(parameters), long_desc))

    def levels(self, stem, display, group, members, *parameters, family):
        """A family of values that share their parameters, each with SET and INC."""
        self.add_enum(family, members)
        self.add(f"{stem}.${family}.$SETINC", f"{display} ${family} $SETINC", group, *parameters)

    def switches(self, stem, display, group, members, family):
        self.add_enum(family, members)
        self.add(f"{stem}.${family}.SET", f"{display} ${family}", group, switch())

    def actions(self, stem, display, group, members, family):
        self.add_enum(family, members)
        self.add(f"{stem}.${family}", f"{display} ${family}", group)

    def xml(self):
        lines = ['<?xml version="1.0" encoding="ISO-8859-1"?>', "<mfd>"]
        for name, (fidseg, display, low, high, offset) in self.indexed.items():
            lines.append("  <fidsegment_indexed" + attributes(name=name, fidseg=fidseg, displayname=display,
                                                                min=low, max=high, offset=offset) + "/>")
        for name, members in self.enums.items():
            lines.append(f"  <fidsegment_enum name={quoteattr(name)}>")
            lines += ["    <segment" + attributes(fidseg=s, displayname=d) + "/>" for s, d in members]
            lines.append("  </fidsegment_enum>")
        for heading, entries in self.aliases.items():
            lines.append(f"  <alias name={quoteattr(heading)}>")
            lines += ["    <entry" + attributes(segm=s, descrShort=short, descrLong=long, search2=search) + "/>"
                      for s, short, long, search in entries]
            lines.append("  </alias>")
        for template in self.templates:
            lines += template_xml(template)
        lines.append("</mfd>")
        return "\n".join(lines) + "\n"


def attributes(**values):
    return "".join(f" {key}={quoteattr(str(value))}" for key, value in values.items() if value not in ("", None))


def template_xml(template):
    head = "  <fid" + attributes(name=template.name, sid=template.sid, group=template.group,
                                 description=template.description, long_desc=template.long_desc)
    if not template.parameters:
        return [head + "/>"]
    lines = [head + ">"]
    for parameter in template.parameters:
        tag = parameter.kind + "_parameter"
        start = f"    <{tag}" + attributes(name=parameter.name, description=parameter.description,
                                           use="optional" if parameter.optional else "", **parameter.attributes)
        if parameter.values:
            lines.append(start + ">")
            lines += ["      <enum" + attributes(value=v, description=d) + "/>" for v, d in parameter.values]
            lines.append(f"    </{tag}>")
        else:
            lines.append(start + "/>")
    return lines + ["  </fid>"]


# Parameters. The default name is the one that the value update writes first.

def percent(description, low=0, high=100, name="VALUE", scale=0.01, optional=False):
    return Parameter("float", name, description, optional,
                     dict(type="percent", min=f"{low * scale:g}", max=f"{high * scale:g}", minDisp=low, maxDisp=high))


def degree(description, low=-180, high=180, name="VALUE"):
    return Parameter("float", name, description, False,
                     dict(type="degree", min=f"{low / 360:g}", max=f"{high / 360:g}", minDisp=low, maxDisp=high))


def number(description, low, high, name="VALUE"):
    return Parameter("float", name, description, False, dict(min=low, max=high, minDisp=low, maxDisp=high))


def unlimited(description, name="VALUE"):
    return Parameter("float", name, description, False, dict(min=0, max=0, minDisp=0, maxDisp=0))


def scaled(description, high, low_display=0, name="VALUE", low=0):
    return Parameter("int", name, description, False,
                     dict(scaler="yes", min=low, max=high, minDisp=low_display, maxDisp=100))


def whole(description, low, high, name="VALUE", optional=False):
    """The description stands directly before the number in a command line, so it ends in ": "."""
    return Parameter("int", name, description + ": ", optional, dict(min=low, max=high, minDisp=low, maxDisp=high))


def choice(description, values, name="VALUE", optional=False):
    return Parameter("enum", name, description, optional, {}, values)


def switch(description="State", name="STATE"):
    return choice(description, OFF_ON, name)


def source(description="Source", name="INPUT", optional=False):
    return Parameter("input", name, description, optional)


def timecode(description, name="TIMECODE", optional=False):
    return Parameter("timecode", name, description, optional)


# Expansion, as the program does it.

@dataclass(frozen=True)
class Function:
    name: str
    description: str
    group: str
    sid: str
    source: int
    template: Template = field(compare=False, repr=False)

    @property
    def incremental(self):
        return not self.sid


def family_members(name, files):
    """Families of an earlier file serve the later ones."""
    for file in files:
        if name in file.indexed:
            fidseg, display, low, high, offset = file.indexed[name]
            return [(f"{fidseg}{i}", f"{display}{i + offset}") for i in range(low, high + 1)]
        if name in file.enums:
            return file.enums[name]
    raise KeyError(f"unknown segment family {name}")


def expand(files):
    """All functions in registration order, duplicates included."""
    functions = []
    for position, file in enumerate(files):
        for template in file.templates:
            functions += expand_template(template, file.source, files[:position + 1])
    return functions


def expand_template(template, source_flag, files):
    segments = template.name.split(".")
    levels = [family_members(s[1:], files) if s.startswith("$") else [(s, s)] for s in segments]
    result = []
    for combination in itertools.product(*levels):
        name = ".".join(fidseg for fidseg, _ in combination)
        if "ME4" in name and ("KEY5" in name or "KEY6" in name):
            continue
        chosen = {s: c for s, c in zip(segments, combination) if s.startswith("$")}
        incremental = any(fidseg == "INC" for fidseg, _ in combination)
        fill = lambda text, which: re.sub(r"\$\w+", lambda m: chosen[m.group(0)][which], text)
        result.append(Function(name, fill(template.description, 1), "" if incremental else fill(template.group, 0),
                               "" if incremental else fill(template.sid, 0), source_flag, template))
    return result
