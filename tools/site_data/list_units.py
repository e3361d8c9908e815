"""What each kind of unit understands: the keyword entries of its decoding lists."""

from .list_model import (ALL, NONE, OFF_ON, SET, SET_STEP, SET_TRIGGER, STEP, TRIGGER, Entry, analog, analog_bi, byte,
                         choice, levels, long, plain, positions, selected, source, stepping, switches, timecode,
                         triggers, word)
from .mix_effects import WIPE_PATTERNS

COLOR = [Entry(0x20, SET_STEP, "Hue", "Hue", [analog("Hue", 3599, "0 deg", "360 deg")]),
         Entry(0x21, SET_STEP, "Sat", "Saturation", [analog("Saturation")]),
         Entry(0x22, SET_STEP, "Lum", "Luminance", [analog("Luminance")])]
EDGES = [(1, "Left"), (2, "Right"), (3, "Top"), (4, "Bottom")]
BUSES = [(1, "A"), (2, "B"), (3, "C"), (4, "D")]


def crossbar():
    return ([Entry(0x01, SET, "Pgm", "Program Source", [source()], 0x00),
             Entry(0x02, SET, "Pst", "Preset Source", [source()], 0x01),
             Entry(0x03, SET, "Util1", "Utility 1 Source", [source()]),
             Entry(0x04, SET, "Util2", "Utility 2 Source", [source()])]
            + selected(0x10, "Bus", "Bus", "Bus", BUSES, source(), SET)
            + switches(0x20, "Split Key", "Protect") + triggers(0x30, "Cut", "Swap"))


def key():
    return (switches(0x01, "Key On", "Key Invert", "Mask", "Border", "Shadow", "Shaped")
            + [Entry(0x08, SET_STEP, "Type", "Key Type", [choice("Type", [
                (1, "Lum", "Luminance"), (2, "Lin", "Linear"), (3, "Chr", "Chroma"), (4, "Pre", "Preset Pattern")])]),
               Entry(0x09, SET, "Fill", "Fill Source", [source("Fill")]),
               Entry(0x0A, SET, "Key", "Key Source", [source("Key")])]
            + levels(0x10, "Clip", "Gain", "Transparency", "Density", "Chroma Selectivity", "Chroma Suppression")
            + selected(0x18, "Mask", "Mask", "Edge", EDGES, analog_bi("Position"))
            + [Entry(0x19, SET, "Border", "Border Off", [choice("Mode", [(0, "Off")])]),
               Entry(0x19, SET, "Border", "Border Width", [choice("Mode", [(1, "Border"), (2, "Outline")]),
                                                           word(0, 255)])]
            + [Entry(0x1A, SET_STEP, "Rate", "Key Rate", [byte(0, 250, 12)])] + stepping(0x1B, "Memo", "Key Memory")
            + triggers(0x30, "Cut", "Auto", "Auto Chroma", "Reset") + COLOR)


def external_key():
    return (switches(0x01, "Key On", "Tally") + [Entry(0x09, SET, "Fill", "Fill Source", [source("Fill")]),
                                                 Entry(0x0A, SET, "Key", "Key Source", [source("Key")])]
            + triggers(0x30, "Cut", "Auto"))


def wipe():
    patterns = list(enumerate(WIPE_PATTERNS, 1))
    return ([Entry(0x01, SET_STEP, "Pattern", "Wipe Pattern", [choice("Pattern", patterns, "pt_WordEnum")])]
            + levels(0x02, "Size", "Softness", "Border Width", "Aspect")
            + positions(0x08, "Position X", "Position Y", "Rotation", "Modulation")
            + switches(0x10, "Reverse", "Flip Flop", "Positioner", "Border")
            + [Entry(0x18, SET_STEP, "Multi", "Multiple", [byte(1, 16, 1), byte(1, 16, 1)]),
               Entry(0x19, SET_STEP, "Speed", "Rotation Speed", [word(-360, 360)])] + COLOR)


def transition():
    elements = [(1, "Background"), (2, "Key 1"), (4, "Key 2"), (8, "Key 3"), (16, "Key 4"),
                (3, "Background and Key 1"), (0x1F, "All", "Background and all Keys")]
    return ([Entry(0x01, SET_STEP, "Type", "Transition Type", [choice("Type", [
                (1, "Mix"), (2, "Wipe"), (3, "Add", "Additive Mix"), (4, "Dpm", "Dpm Effect")])], 0x00),
             Entry(0x02, SET_STEP, "Rate", "Transition Rate", [word(0, 999, 25)]),
             Entry(0x03, SET, "Duration", "Transition Duration", [timecode("Duration")]),
             Entry(0x04, SET_STEP, "Next", "Next Transition", [choice("Elements", elements, "pt_LongEnum")]),
             Entry(0x05, SET_STEP, "Lever", "Lever Position", [analog("Lever", 4095)])]
            + switches(0x10, "Preview", "Reverse", "Preset Black")
            + triggers(0x30, "Cut", "Auto", "Fade to Black", "Stop"))


def me_misc():
    return ([Entry(0x01, SET, "Name", "Bank Name", [plain("pt_String", "Name")]),
             Entry(0x02, SET, "Clean", "Clean Feed", [choice("Keys", [(0, "All Keys"), (1, "Without Key 1"),
                                                                     (2, "Background")])])]
            + switches(0x10, "Tally", "Bank Lock") + triggers(0x30, "Reset") + [Entry(0x3F, NONE, "Status", "Status")])


def time_memo():
    return ([Entry(0x01, SET_TRIGGER, "Recall", "Recall Register", [byte(0, 99)]),
             Entry(0x02, SET, "Store", "Store Register", [byte(0, 99)]),
             Entry(0x03, SET_STEP, "Run", "Run Timeline", [choice("Direction", [(1, "Forward"), (0xFF, "Reverse")])]),
             Entry(0x04, SET, "Start", "Start Timecode", [timecode()]),
             Entry(0x05, SET, "Levels", "Enabled Levels", [long(0, 0xFFFF, 0)])]
            + stepping(0x06, "Frame", "Key Frame") + triggers(0x30, "Rewind", "Stop"))


def bus_correction():
    return (switches(0x01, "Correction", "Legalizer") + positions(0x10, "Gain Y", "Gain U", "Gain V", "Black", "Gamma")
            + [Entry(0x18, SET_STEP, "Hue", "Hue",
                     [analog_bi("Hue", 0, 1800, 3600, ("-180 deg", "0 deg", "+180 deg"))])]
            + triggers(0x30, "Reset"))


def mask_bus():
    return [Entry(0x01, SET, "Source", "Mask Source", [source()]), *levels(0x10, "Softness", "Clip", "Gain"),
            *switches(0x02, "Mask Enable", "Mask Invert")]


def mask_store():
    return (selected(0x01, "Edge", "Mask Edge", "Edge", EDGES, word(0, 1920)) + switches(0x10, "Mask Invert")
            + [Entry(0x02, SET_TRIGGER, "Recall", "Recall Mask", [byte(1, 20, 1)])])


def dpm_channel():
    axes = [(1, "X"), (2, "Y"), (3, "Z")]
    return (selected(0x01, "Pos", "Position", "Axis", axes, long(-400000, 400000))
            + selected(0x02, "Rot", "Rotation", "Axis", axes, long(-3600000, 3600000))
            + [Entry(0x03, SET_STEP, "Size", "Size", [analog("Size", 4000, "0 %", "400 %")]),
               Entry(0x04, SET, "Fill", "Fill Source", [source("Fill")]),
               Entry(0x05, SET, "Key", "Key Source", [source("Key")])]
            + selected(0x06, "Crop", "Crop", "Edge", EDGES, analog("Width"))
            + switches(0x10, "Channel On", "Border", "Shadow", "Crop Enable")
            + levels(0x18, "Opacity", "Defocus", "Border Width") + triggers(0x30, "Center", "Full Size") + COLOR)


def dpm_global():
    return (positions(0x01, "Perspective X", "Perspective Y") + levels(0x08, "Perspective", "Light")
            + switches(0x10, "Global Axis", "Freeze"))


def dpm_main():
    return ([Entry(0x01, SET_STEP, "Effect", "Effect Number", [word(1, 400, 1)]),
             Entry(0x02, SET, "Duration", "Effect Duration", [timecode("Duration")])]
            + stepping(0x03, "Effect", "Effect") + triggers(0x30, "Run", "Rewind", "Stop", "Reverse Run"))


def input_settings():
    return ([Entry(0x01, SET, "Name", "Input Name", [plain("pt_String", "Name")]),
             Entry(0x02, SET, "KeyAsg", "Key Assignment", [source("Key")]),
             Entry(0x03, SET_STEP, "Format", "Input Format", [choice("Format", [
                 (0, "Auto"), (1, "1080i"), (2, "1080p"), (3, "720p"), (4, "576i")])])]
            + switches(0x10, "Tally", "Freeze") + positions(0x18, "Level", "Gain R", "Gain G", "Gain B"))


def aux_bus():
    return ([Entry(0x01, SET, "Source", "Aux Source", [source()]),
             Entry(0x02, SET, "Key", "Aux Key", [source("Key")]),
             Entry(0x03, SET, "Rate", "Mix Rate", [byte(0, 250)])]
            + switches(0x10, "Protect", "Source Hold") + stepping(0x18, "Walk", "Source")
            + triggers(0x30, "Cut", "Black"))


def color():
    return COLOR + switches(0x01, "Wash", "Rainbow") + triggers(0x30, "White", "Black")


def machine():
    return (triggers(0x30, "Play", "Stop", "Record", "Rewind", "Fast Forward", "Eject", "Preroll")
            + [Entry(0x01, SET, "Cue", "Cue to Timecode", [timecode()], 0x10),
               Entry(0x02, SET, "In", "Mark In", [timecode()]), Entry(0x03, SET, "Out", "Mark Out", [timecode()]),
               Entry(0x04, SET_STEP, "Speed", "Play Speed", [analog_bi("Speed", 0, 1000, 2000)]),
               Entry(0x05, SET_TRIGGER, "Clip", "Load Clip", [plain("pt_Clipname", "Clip")]),
               Entry(0x06, SET_STEP, "Preset", "Cue Point", [byte(1, 99, 1)])]
            + switches(0x10, "Roll with Cut", "Loop", "Standby"))


def ram_recorder():
    return (triggers(0x30, "Play", "Stop", "Record", "Grab", "Clear")
            + [Entry(0x01, SET, "Clip", "Select Clip", [plain("pt_Clipname", "Clip")]),
               Entry(0x02, SET, "Cue", "Cue to Timecode", [timecode()]),
               Entry(0x03, SET_STEP, "Length", "Record Length", [word(1, 750, 250)]),
               Entry(0x04, SET_STEP, "Mode", "Store Mode",
                     [choice("Mode", [(0, "Clip"), (1, "Still")], "pt_WordEnum")]),
               Entry(0x05, SET, "Source", "Record Source", [source()])] + switches(0x10, "Loop", "With Key"))


def setup():
    return ([Entry(0x01, SET_STEP, "Brightness", "Button Brightness", [byte(0, 15, 8)]),
             Entry(0x02, SET, "Name", "Name", [plain("pt_String", "Name")]),
             Entry(0x03, SET_STEP, "Mode", "Mode", [choice("Mode", [(0, "Normal"), (1, "Training"), (2, "Service")])])]
            + switches(0x10, "Beep", "Lock") + triggers(0x30, "Save", "Load"))


def control_port():
    return (switches(0x01, "Enable") + [Entry(0x02, SET_STEP, "Mode", "Port Mode", [choice("Mode", [
        (0, "Off"), (1, "Edge"), (2, "Level"), (3, "Pulse")])]),
               Entry(0x03, SET, "Length", "Pulse Length", [word(1, 250, 5)])]
            + triggers(0x30, "Fire"))


def tally():
    return switches(0x01, "Tally Enable") + [Entry(0x02, SET, "Source", "Tally Source", [source()]),
                                             Entry(0x03, SET, "Mask", "Tally Mask", [long(0, 0xFFFFFFFF)])]


def substitution():
    return (switches(0x01, "Table Enable") + [Entry(0x02, SET, "Source", "Substitute", [source()])]
            + triggers(0x30, "Clear"))


def application():
    return [Entry(0x01, SET_TRIGGER, "Load", "Load Application", [byte(0, 99)]),
            Entry(0x02, SET, "Name", "Application Name", [plain("pt_String", "Name")])] + triggers(0x30, "Default")


def videostore():
    return ([Entry(0x01, SET_TRIGGER, "Clip", "Load Still", [plain("pt_Clipname", "Still")])]
            + stepping(0x02, "Still", "Still") + triggers(0x30, "Grab", "Clear"))


def editor():
    return switches(0x01, "Remote Enable") + [Entry(0x02, SET, "Bank", "Controlled Bank", [choice("Bank", [
        (0, "PP"), (1, "Me1"), (2, "Me2"), (3, "Me3")], "pt_LongEnum")])] + triggers(0x30, "Release")
