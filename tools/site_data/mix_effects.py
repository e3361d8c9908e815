"""Functions of the mix effects: buses, keys, wipes, transitions, utility buses, internal manipulators, correction."""

from .families import add_color, add_correction, add_dpm
from .interface import choice, degree, percent, scaled, source, switch, timecode, whole

WIPE_PATTERNS = ["Horizontal", "Vertical", "Box", "Corner Left Top", "Corner Right Top", "Diagonal", "Circle",
                 "Ellipse", "Diamond", "Heart", "Star", "Clock", "Double Clock", "Blinds", "Barn Doors", "Matrix",
                 "Random Blocks", "Iris", "Triangle", "Cross"]
HOLD = [("0", "Release"), ("1", "Hold")]
CURVES = [("0", "Linear"), ("1", "Slow In"), ("2", "Slow Out"), ("3", "S-Curve")]


def patterns():
    return choice("Pattern", [(str(i), name) for i, name in enumerate(WIPE_PATTERNS, 1)], "PATTERN")


def add_buses(f):
    for bus, name in (("PGM", "Program"), ("PST", "Preset")):
        stem, group = f"$ME.{bus}", f"{bus}.$ME"
        f.add(f"{stem}.SOURCE.SET", f"$ME {name} Source", group, source(),
              long_desc=f"Selects the source of the {name.lower()} bus. The picture changes at once.")
        f.add(f"{stem}.HOLD.SET", f"$ME {name} Source Hold", group, choice("Hold", HOLD, "STATE"))
        f.add(f"{stem}.SHIFT.SET", f"$ME {name} Shift Level", group, whole("Level", 1, 4))
        f.add(f"{stem}.PROCESS.SET", f"$ME {name} Process", group, switch())
        f.add(f"{stem}.MIX_RATE.SET", f"$ME {name} Soft Cut", group, whole("Frames", 0, 99))
    group = "BUS.$ME"
    f.add("$ME.$BUS.SOURCE.SET", "$ME $BUS Source", group, source(), switch("Source Hold", "HOLD"))
    f.add("$ME.$BUS.LEVEL.$SETINC", "$ME $BUS Level $SETINC", group, percent("Level"))
    f.switches("$ME.$BUS", "$ME $BUS", group,
               [("PROTECT", "Protect"), ("SPLIT_KEY", "Split Key"), ("TALLY", "Tally"), ("MONO", "Monochrome")],
               "BUS_SWITCH")
    f.add("$ME.XBAR.$XBAR_BUTTON.SET", "$ME Crossbar $XBAR_BUTTON", "XBAR.$ME", whole("Shift", 1, 4, "SHIFT", True),
          source())
    f.add("$ME.PREVIEW.SOURCE.SET", "$ME Preview", group, source())
    f.add("$ME.CLEANFEED.SET", "$ME Clean Feed", group, choice("Keys", [("0", "All Keys"), ("1", "Without Key 1"),
          ("2", "Without Keys 1 and 2"), ("3", "Background only")], "MODE"))


def add_keys(f):
    stem, display, group = "$ME.$KEY", "$ME $KEY", "$ME.$KEY.KEY"
    f.add(f"{stem}.TYPE.SET", f"{display} Type", group,
          choice("Type", [("LUM", "Luminance"), ("LIN", "Linear"), ("CHR", "Chroma"), ("PRE", "Preset Pattern"),
                          ("FULL", "Full Screen"), ("IDPM", "iDpm")], "TYPE"),
          long_desc="Changing the type keeps the levels of each type, so switching back restores the look.")
    f.add(f"{stem}.FILL.SET", f"{display} Fill", group, source("Fill"))
    f.add(f"{stem}.KEY_SOURCE.SET", f"{display} Key Source", group, source("Key"), switch("Source Hold", "HOLD"))
    f.switches(stem, display, group,
               [("ON", "On"), ("INVERT", "Invert"), ("MASK_ENABLE", "Mask"), ("MASK_INVERT", "Mask Invert"),
                ("BORDER_ENABLE", "Border"), ("SHADOW_ENABLE", "Shadow"), ("MATTE_FILL", "Matte Fill"),
                ("AUTO_SELECT", "Auto Select"), ("FILL_FREEZE", "Fill Freeze"), ("KEY_FREEZE", "Key Freeze"),
                ("SHAPED", "Shaped"), ("FOLLOW_FILL", "Key Follows Fill"), ("LINK", "Link"), ("TALLY", "Tally")],
               "KEY_SWITCH")
    f.levels(stem, display, group,
             [("CLIP", "Clip"), ("GAIN", "Gain"), ("TRANSPARENCY", "Transparency"), ("DENSITY", "Density"),
              ("CLIP_HIGH", "Upper Clip"), ("CLIP_LOW", "Lower Clip"), ("EDGE_SOFT", "Edge Softness"),
              ("SHRINK", "Shrink"), ("NARROW", "Narrow")], percent("Level"), family="KEY_LEVEL")
    f.levels(stem, display, group,
             [("CHROMA_ANGLE", "Chroma Angle"), ("CHROMA_WIDTH", "Chroma Width")],
             degree("Angle", 0, 360), family="KEY_ANGLE")
    f.levels(stem, display, group,
             [("CHROMA_SELECT", "Chroma Selectivity"), ("CHROMA_SUPPRESS", "Chroma Suppression"),
              ("CHROMA_FLARE", "Chroma Flare"), ("CHROMA_SHADOW", "Chroma Shadow"),
              ("CHROMA_NOISE", "Chroma Noise Filter"), ("BORDER_WIDTH", "Border Width"),
              ("BORDER_SOFT", "Border Softness"), ("SHADOW_X", "Shadow Offset X"), ("SHADOW_Y", "Shadow Offset Y"),
              ("SHADOW_DENSITY", "Shadow Density")], scaled("Level", 4095), family="KEY_AMOUNT")
    f.levels(stem, display, group,
             [("MASK_LEFT", "Mask Left"), ("MASK_RIGHT", "Mask Right"), ("MASK_TOP", "Mask Top"),
              ("MASK_BOTTOM", "Mask Bottom"), ("FILL_X", "Fill Position X"), ("FILL_Y", "Fill Position Y")],
             percent("Position", -50, 50), family="KEY_EDGE")
    f.add(f"{stem}.BORDER_MODE.SET", f"{display} Border Mode", group,
          choice("Mode", [("0", "Border"), ("1", "Drop Shadow"), ("2", "Outline"), ("3", "Extrude")], "MODE"),
          whole("Direction", 0, 7, "DIRECTION", True), percent("Width", name="WIDTH", optional=True))
    f.add(f"{stem}.PRIORITY.SET", f"{display} Priority", group, whole("Layer", 1, 6))
    f.add(f"{stem}.RATE.SET", f"{display} Rate", group, choice("Curve", CURVES, "CURVE", True),
          whole("Frames", 0, 999, "RATE"))
    f.add(f"{stem}.DELAY.SET", f"{display} Delay", group, timecode("Delay"))
    f.actions(stem, display, group,
              [("CUT", "Cut"), ("AUTO", "Auto"), ("AUTO_CHROMA", "Auto Chroma"), ("RESET", "Reset"),
               ("CUT_ON", "Cut On"), ("CUT_OFF", "Cut Off")], "KEY_ACTION")
    add_memories(f, stem, display, group)
    add_color(f, f"{stem}.MATTE", f"{display} Matte", group)
    add_color(f, f"{stem}.BORDER", f"{display} Border", group)


def add_memories(f, stem, display, group):
    f.add(f"{stem}.$MEMORY.$MEMORY_ACTION", f"{display} $MEMORY $MEMORY_ACTION", group)


def add_wipe(f, stem, display, group, prefix):
    """Pattern generator of a wipe or a key wipe; families get the prefix, as the two differ in what they list."""
    f.add(f"{stem}.PATTERN.SET", f"{display} Pattern", group, patterns(), switch("Reverse", "REVERSE"))
    levels = [("POSITION_X", "Position X"), ("POSITION_Y", "Position Y"), ("SIZE", "Size"), ("SOFT", "Softness"),
              ("BORDER", "Border Width"), ("ASPECT", "Aspect"), ("MODULATION", "Modulation"),
              ("MOD_FREQUENCY", "Modulation Frequency"), ("SYMMETRY", "Symmetry")]
    f.levels(stem, display, group, levels, percent("Level", -100, 100), family=f"{prefix}_LEVEL")
    f.add(f"{stem}.ROTATION.$SETINC", f"{display} Rotation $SETINC", group, degree("Angle"))
    f.add(f"{stem}.ROTATION_SPEED.$SETINC", f"{display} Rotation Speed $SETINC", group, degree("Degrees a Second"))
    f.levels(stem, display, group, [("MULTI_H", "Multiple Horizontal"), ("MULTI_V", "Multiple Vertical"),
                                    ("SHIFT_H", "Shift Horizontal"), ("SHIFT_V", "Shift Vertical")],
             whole("Count", 1, 16), family=f"{prefix}_COUNT")
    f.switches(stem, display, group,
               [("BORDER_ENABLE", "Border"), ("REVERSE", "Reverse"), ("FLIP_FLOP", "Flip Flop"),
                ("POSITION_ENABLE", "Positioner"), ("MODULATION_ENABLE", "Modulation"),
                ("ROTATION_ENABLE", "Rotation")], f"{prefix}_SWITCH")
    f.actions(stem, display, group, [("CENTER", "Center"), ("RESET", "Reset")], f"{prefix}_ACTION")
    add_memories(f, stem, display, group)
    add_color(f, f"{stem}.BORDER", f"{display} Border", group)


def add_transitions(f):
    stem, display, group = "$ME.TRANSI", "$ME Transition", "$ME.TRANSI"
    f.add(f"{stem}.TYPE.SET", f"{display} Type", group,
          choice("Type", [("MIX", "Mix"), ("WIPE", "Wipe"), ("ADD", "Additive Mix"), ("FAM", "Full Additive Mix"),
                          ("CUT", "Cut"), ("DPM", "Dpm Effect")], "TYPE"))
    f.add(f"{stem}.RATE.SET", f"{display} Rate", group, choice("Curve", CURVES, "CURVE", True),
          whole("Frames", 0, 999, "RATE"))
    f.add(f"{stem}.DURATION.SET", f"{display} Duration", group, timecode("Duration"))
    f.add(f"{stem}.POSITION.$SETINC", f"{display} Position $SETINC", group, scaled("Lever", 4095))
    f.add(f"{stem}.LIMIT.$SETINC", f"{display} Limit $SETINC", group, scaled("Limit", 255))
    f.add(f"{stem}.CROSSOVER.$SETINC", f"{display} Crossover $SETINC", group, percent("Crossover", -100, 100))
    f.add(f"{stem}.SOURCE.SET", f"{display} Preset Source", group, source(), sid="$ME.PST.SOURCE")
    f.switches(stem, display, group,
               [("NEXT_BGND", "Next Background")] + [(f"NEXT_KEY{i}", f"Next Key {i}") for i in range(1, 7)] +
               [("NEXT_PRIORITY", "Next Key Priority"), ("PREVIEW", "Preview"), ("PRESET_BLACK", "Preset Black"),
                ("REVERSE", "Reverse"), ("LEVER_SWAP", "Lever Swap"), ("SPLIT", "Split Lever")], "TRANSI_SWITCH")
    f.actions(stem, display, group, [("CUT", "Cut"), ("AUTO", "Auto"), ("FADE", "Fade to Black"),
                                     ("STOP", "Stop"), ("SWAP", "Swap Buses")], "TRANSI_ACTION")


def add_utilities(f):
    stem, display, group = "$ME_FULL.$UTIL", "$ME_FULL $UTIL", "$ME_FULL.$UTIL"
    f.add(f"{stem}.SOURCE.SET", f"{display} Source", group, source(), switch("Source Hold", "HOLD"))
    f.add(f"{stem}.USE.SET", f"{display} Use", group,
          choice("Use", [("0", "Border Fill"), ("1", "Matte Fill"), ("2", "Wipe Key"),
                         ("3", "Preview Overlay")], "USE"))
    f.levels(stem, display, group, [("LEVEL", "Level"), ("FADE", "Fade"), ("OFFSET", "Offset")],
             percent("Level"), family="UTIL_LEVEL")
    f.switches(stem, display, group, [("ENABLE", "Enable"), ("INVERT", "Invert"), ("TALLY", "Tally")], "UTIL_SWITCH")
    stem, display, group = "$ME_FULL.$MASK", "$ME_FULL $MASK", "MASK.$ME_FULL"
    f.add(f"{stem}.SOURCE.SET", f"{display} Source", group, source("Mask"))
    f.add(f"{stem}.PATTERN.SET", f"{display} Pattern", group, patterns())
    f.levels(stem, display, group, [("LEFT", "Left"), ("RIGHT", "Right"), ("TOP", "Top"), ("BOTTOM", "Bottom"),
                                    ("SOFT", "Softness")], percent("Edge", -50, 50), family="MASK_LEVEL")
    f.switches(stem, display, group, [("ENABLE", "Enable"), ("INVERT", "Invert")], "MASK_SWITCH")


def add_mix_effects(f):
    add_buses(f)
    add_keys(f)
    add_wipe(f, "$ME_FULL.$KEY14.WIPE", "$ME_FULL $KEY14 Wipe", "$ME_FULL.$KEY14.WIPE", "KEYWIPE")
    add_wipe(f, "$ME_FULL.$WIPE", "$ME_FULL $WIPE", "$ME_FULL.$WIPE", "WIPE")
    add_transitions(f)
    add_utilities(f)
    add_dpm(f, "$ME_FULL.IDPM.$IDPM_CHANNEL", "$ME_FULL $IDPM_CHANNEL", "$ME_FULL.IDPM.$IDPM_CHANNEL")
    add_dpm(f, "$ME_FULL.$KEY14.IDPM", "$ME_FULL $KEY14 iDpm", "$ME_FULL.$KEY14.IDPM")
    add_correction(f, "$ME.YUV_CORR", "$ME", "YUV_CORR.$ME", "YUV", "YUV Corr.")
    add_correction(f, "$ME_FULL.RGB_CORR", "$ME_FULL", "RGB_CORR.$ME_FULL", "RGB", "RGB Corr.")
