"""Decoding lists of classic commands: which units have one, and their text. One file for each (cd, co)."""

from . import list_units as u
from .classic import list_path

# device code, first and last command code, what the file says it is, entries
LISTS = [
    (0, 1, 1, "Crossbar", u.crossbar),
    (0, 2, 2, "Bus Correction", u.bus_correction),
    (0, 3, 3, "Maskbus", u.mask_bus),
    (0, 8, 8, "Transition", u.transition),
    (0, 14, 14, "TimeMemo", u.time_memo),
    (0, 16, 17, "Wipe", u.wipe),
    (0, 32, 35, "Key", u.key),
    (0, 36, 38, "Ext-Key", u.external_key),
    (0, 48, 48, "Maskstore", u.mask_store),
    (0, 64, 64, "Me-Misc", u.me_misc),
    (0, 160, 160, "Dpm Main", u.dpm_main),
    (0, 161, 164, "Dpm Channel", u.dpm_channel),
    (0, 177, 180, "Dpm Global", u.dpm_global),
    (16, 1, 48, "Aux", u.aux_bus),
    (16, 144, 144, "Ext-AuxName", u.setup),
    (16, 145, 148, "Ext-Aux", u.aux_bus),
    (17, 1, 96, "Input", u.input_settings),
    (18, 1, 3, "Color", u.color),
    (19, 1, 2, "Dve", u.dpm_main),
    (19, 16, 19, "DVx Chan", u.dpm_channel),
    (19, 24, 24, "DVx Global", u.dpm_global),
    (19, 32, 32, "DVx Main", u.dpm_main),
    (20, 1, 2, "Stores", u.videostore),
    (20, 4, 4, "MPR2", u.ram_recorder),
    (21, 1, 8, "MF-Gpi", u.control_port),
    (22, 1, 8, "MF-Gpo", u.control_port),
    (24, 0, 4, "Tally", u.tally),
    (29, 1, 4, "Media Player", u.machine),
    (29, 64, 71, "Media Player LAN", u.machine),
    (29, 16, 21, "RamRecorder", u.ram_recorder),
    (29, 32, 32, "RamRecorder Common", u.setup),
    (30, 0, 0, "Master TimeMemo", u.time_memo),
    (31, 1, 2, "Editor", u.editor),
    (32, 1, 1, "SidePanel", u.setup),
    (33, 1, 1, "CP Operational", u.setup),
    (33, 4, 4, "CP Application", u.application),
    (34, 1, 1, "MF Enviroment", u.setup),
    (35, 0, 4, "Applic", u.application),
    (37, 1, 8, "AuxBus Correction", u.bus_correction),
    (67, 1, 4, "Substab", u.substitution),
]
COMMENTS = ["; Names of the codes of this unit. Keyword, then allowed actions: 1 set, 2 increment, 4 trigger.",
            "; Codes 0x30 and up are triggers. Limits are panel values, low byte first."]


def list_text(cd, co, name, entries):
    lines = [f"CD=0x{cd:02x}", f"CO=0x{co:02x}", f"; {name}", *COMMENTS, ""]
    if (cd, co) == (19, 1):
        lines[1] += ", 0x02"  # a list for a range passes under its first code
    for entry in entries:
        third = f", 0x{entry.third:02x}" if entry.third >= 0 else ""
        long_name = f' "{entry.long}"' if entry.long else ""
        lines.append(f'[0x{entry.keyword:02x}] 0x{entry.sub_code:02x}, "{entry.short}"{long_name}{third}')
        for parameter in entry.parameters:
            lines.append(f'  {parameter.kind} "{parameter.text}"')
            lines += [f"    : {row}" for row in parameter.rows]
    return "\n".join(lines) + "\n"


def decoding_lists():
    """Relative path -> text."""
    return {list_path(cd, co): list_text(cd, co, name, entries())
            for cd, low, high, name, entries in LISTS for co in range(low, high + 1)}
