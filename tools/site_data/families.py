"""Segment families of the mainframe's functions and the parts that several functions share."""

from .interface import choice, degree, percent, source, unlimited, whole
from .sources import MIX_EFFECTS, input_sources


def add_families(f):
    f.add_enum("SETINC", [("SET", "Set"), ("INC", "Increment")])
    f.add_enum("ME", MIX_EFFECTS)
    f.add_enum("ME_FULL", MIX_EFFECTS[:4])
    f.add_indexed("KEY", "KEY", "Key ", 1, 6)
    f.add_indexed("KEY14", "KEY", "Key ", 1, 4)
    f.add_indexed("UTIL", "UTIL", "Util ", 1, 2)
    f.add_indexed("WIPE", "WIPE", "Wipe ", 1, 2)
    f.add_indexed("MASK", "MASK", "Mask ", 1, 4)
    f.add_indexed("IDPM_CHANNEL", "CHANNEL", "iDpm ", 1, 4)
    f.add_indexed("EDPM_CHANNEL", "CHANNEL", "eDpm Channel ", 1, 4)
    f.add_indexed("EDPM", "EDPM", "eDpm ", 1, 4)
    f.add_indexed("AUX", "AUX", "Aux ", 1, 48)
    f.add_indexed("MACHINE_RS422", "MACHINE", "Mach. RS422 ", 1, 4)
    f.add_indexed("MACHINE_LAN", "MACHINE", "Mach. LAN ", 5, 36, -4)
    f.add_indexed("RAMCHAN", "RAMCHAN", "RamRec ", 1, 6)
    f.add_indexed("RAM", "RAM", "Ram Store ", 1, 6)
    f.add_indexed("BACKGROUND", "BACKGROUND", "Color ", 1, 3)
    f.add_indexed("EMEM_BANK", "BANK", "Bank ", 0, 9)
    f.add_indexed("EMEM_REG", "REG", "Reg. ", 0, 99)
    f.add_indexed("GPI", "GPI", "GPI ", 1, 32)
    f.add_indexed("GPO", "GPO", "GPO ", 1, 128)
    f.add_indexed("SUBST_TABLE", "SUBST", "Substitution ", 1, 15)
    f.add_indexed("SUBST_ROW", "ROW", "Row ", 1, 96)
    f.add_indexed("XBAR_BUTTON", "BUTTON", "Button ", 1, 32)
    f.add_indexed("MEMORY", "MEMORY", "Memory ", 1, 20)
    f.add_indexed("UMD", "UMD", "Display ", 1, 96)
    f.add_enum("MEMORY_ACTION", [("RECALL", "Recall"), ("STORE", "Store"), ("CLEAR", "Clear")])
    f.add_enum("INPUT_5", input_sources())
    f.add_enum("BUS", [(b, f"Bus {b}") for b in "ABCD"])
    f.add_enum("YUV_LEVEL", correction_levels([("Y", "Luma"), ("U", "Blue Diff."), ("V", "Red Diff.")]))
    f.add_enum("RGB_LEVEL", correction_levels([("R", "Red"), ("G", "Green"), ("B", "Blue")]))
    f.add_enum("CORR_SWITCH", [("ENABLE", "Enable"), ("LEGALIZER", "Legalizer"), ("GANG", "Gang"),
                               ("BYPASS", "Bypass")])
    f.add_enum("CORR_ACTION", [("RESET", "Reset"), ("COPY", "Copy to Clipboard"), ("PASTE", "Paste")])


def correction_levels(components):
    levels = [("GAIN", "Gain"), ("BLACK", "Black"), ("GAMMA", "Gamma"), ("CLIP_HIGH", "White Clip"),
              ("CLIP_LOW", "Black Clip")]
    members = [("GAIN_ALL", "Overall Gain"), ("BLACK_ALL", "Overall Black"), ("GAMMA_ALL", "Overall Gamma")]
    return members + [(f"{level}_{c}", f"{name} {text}") for level, text in levels for c, name in components]


def add_correction(f, stem, display, group, kind, kind_name):
    """Colour correction in one colour space. YUV alone has a hue."""
    f.add(f"{stem}.${kind}_LEVEL.$SETINC", f"{display} {kind_name} ${kind}_LEVEL $SETINC", group,
          percent("Level", -100, 100))
    if kind == "YUV":
        f.add(f"{stem}.HUE.$SETINC", f"{display} {kind_name} Hue $SETINC", group, degree("Hue"))
        f.add(f"{stem}.SATURATION.$SETINC", f"{display} {kind_name} Saturation $SETINC", group,
              percent("Saturation", 0, 200))
    f.add(f"{stem}.$CORR_SWITCH.SET", f"{display} {kind_name} $CORR_SWITCH", group,
          choice("State", [("0", "Off"), ("1", "On")], "STATE"))
    f.add(f"{stem}.$CORR_ACTION", f"{display} {kind_name} $CORR_ACTION", group)


def add_color(f, stem, display, group):
    """Hue, saturation and luminance of a colour, and all three at once."""
    f.add(f"{stem}.HUE.$SETINC", f"{display} Hue $SETINC", group, degree("Hue", 0, 360))
    f.add(f"{stem}.SATURATION.$SETINC", f"{display} Saturation $SETINC", group, percent("Saturation"))
    f.add(f"{stem}.LUMINANCE.$SETINC", f"{display} Luminance $SETINC", group, percent("Luminance"))
    f.add(f"{stem}.COLOR.SET", f"{display} Color", group,
          choice("Preset", [(str(i), name) for i, name in enumerate(
              ["User", "White", "Yellow", "Cyan", "Green", "Magenta", "Red", "Blue", "Black"])], "PRESET", True),
          degree("Hue", 0, 360, "HUE"), percent("Saturation", name="SAT"), percent("Luminance", name="LUM"),
          long_desc="Sets hue, saturation and luminance together. With a preset the three values are ignored.")


def dpm_families(f):
    f.add_enum("DPM_AXIS", [(f"{part}_{axis}", f"{text} {axis}") for part, text in
                            (("POSITION", "Position"), ("AXIS", "Axis Offset"), ("SKEW", "Skew"),
                             ("TARGET", "Target Position"), ("SOURCE", "Source Position")) for axis in "XYZ"])
    f.add_enum("DPM_ANGLE", [(f"{part}_{axis}", f"{text} {axis}") for part, text in
                             (("ROTATION", "Rotation"), ("SPIN", "Spin")) for axis in "XYZ"])
    f.add_enum("DPM_SIZE", [("SIZE", "Size"), ("SIZE_X", "Size X"), ("SIZE_Y", "Size Y"), ("ASPECT", "Aspect"),
                            ("PERSPECTIVE", "Perspective")])
    f.add_enum("DPM_EDGE", [(f"{part}_{edge}", f"{text} {name}") for part, text in
                            (("CROP", "Crop"), ("BORDER", "Border"))
                            for edge, name in (("LEFT", "Left"), ("RIGHT", "Right"), ("TOP", "Top"),
                                               ("BOTTOM", "Bottom"), ("SOFT", "Softness"))])
    f.add_enum("DPM_LOOK", [("OPACITY", "Opacity"), ("DEFOCUS_H", "Defocus Horizontal"),
                            ("DEFOCUS_V", "Defocus Vertical"), ("MOSAIC_H", "Mosaic Horizontal"),
                            ("MOSAIC_V", "Mosaic Vertical"), ("POSTER", "Posterise"), ("SOLAR", "Solarise"),
                            ("SHADOW_X", "Shadow Offset X"), ("SHADOW_Y", "Shadow Offset Y"),
                            ("SHADOW_DENSITY", "Shadow Density"), ("SHADOW_SOFT", "Shadow Softness"),
                            ("TRAIL_LENGTH", "Trail Length"), ("TRAIL_DECAY", "Trail Decay"),
                            ("LIGHT_AMBIENT", "Ambient Light"), ("LIGHT_SPOT", "Spot Light"),
                            ("LIGHT_X", "Light Position X"), ("LIGHT_Y", "Light Position Y"),
                            ("WARP_DEPTH", "Warp Depth"), ("WARP_SPEED", "Warp Speed"),
                            ("RIPPLE_HEIGHT", "Ripple Height"), ("RIPPLE_WIDTH", "Ripple Width"),
                            ("PAGE_TURN", "Page Turn"), ("PAGE_RADIUS", "Page Turn Radius"),
                            ("SPLIT_H", "Split Horizontal"), ("SPLIT_V", "Split Vertical"),
                            ("TINT_AMOUNT", "Tint Amount"), ("LUMA_GAIN", "Luma Gain"),
                            ("CHROMA_GAIN", "Chroma Gain"), ("KEY_GAIN", "Key Gain"), ("KEY_CLIP", "Key Clip"),
                            ("BLUR_EDGE", "Edge Blur"), ("GLOW_SIZE", "Glow Size"), ("GLOW_DECAY", "Glow Decay"),
                            ("REFLECT_DEPTH", "Reflection Depth"), ("REFLECT_FADE", "Reflection Fade")])
    f.add_enum("DPM_SWITCH", [("ENABLE", "Enable"), ("CROP_ENABLE", "Crop"), ("BORDER_ENABLE", "Border"),
                              ("SHADOW_ENABLE", "Shadow"), ("TRAIL_ENABLE", "Trail"), ("LIGHT_ENABLE", "Light"),
                              ("WARP_ENABLE", "Warp"), ("MIRROR_H", "Mirror Horizontal"),
                              ("MIRROR_V", "Mirror Vertical"), ("FREEZE", "Freeze"), ("STROBE", "Strobe"),
                              ("KEY_INVERT", "Key Invert"), ("LOCAL_AXIS", "Local Axes")])
    f.add_enum("DPM_ACTION", [("RUN", "Run"), ("RUN_REVERSE", "Run Reverse"), ("STOP", "Stop"), ("REWIND", "Rewind"),
                              ("CENTER", "Center"), ("RESET", "Reset"), ("FULL_SIZE", "Full Size")])


def add_dpm(f, stem, display, group):
    """Everything that one channel of a picture manipulator has."""
    f.add(f"{stem}.$DPM_AXIS.$SETINC", f"{display} $DPM_AXIS $SETINC", group, number_of_screens())
    f.add(f"{stem}.$DPM_ANGLE.SET", f"{display} $DPM_ANGLE", group, unlimited("Turns"),
          long_desc="In turns; a value beyond 1 makes the picture turn more than once on the way.")
    f.add(f"{stem}.$DPM_ANGLE.INC", f"{display} $DPM_ANGLE Increment", group, unlimited("Turns"))
    f.add(f"{stem}.$DPM_SIZE.$SETINC", f"{display} $DPM_SIZE $SETINC", group, percent("Size", 0, 400))
    f.add(f"{stem}.$DPM_EDGE.$SETINC", f"{display} $DPM_EDGE $SETINC", group, percent("Width"))
    f.add(f"{stem}.$DPM_LOOK.$SETINC", f"{display} $DPM_LOOK $SETINC", group, percent("Amount"))
    f.add(f"{stem}.$DPM_SWITCH.SET", f"{display} $DPM_SWITCH", group,
          choice("State", [("0", "Off"), ("1", "On")], "STATE"))
    f.add(f"{stem}.$DPM_ACTION", f"{display} $DPM_ACTION", group)
    f.add(f"{stem}.FILL.SET", f"{display} Fill Source", group, source("Fill"))
    f.add(f"{stem}.KEY_SOURCE.SET", f"{display} Key Source", group, source("Key"))
    f.add(f"{stem}.BACK.SET", f"{display} Back Side Source", group, source("Back Side"))
    f.add(f"{stem}.WARP_SHAPE.SET", f"{display} Warp Shape", group,
          choice("Shape", [(str(i), name) for i, name in enumerate(
              ["Flat", "Page Turn", "Page Roll", "Ripple", "Sphere", "Cylinder", "Wave", "Slit"])], "SHAPE"))
    f.add(f"{stem}.STROBE_RATE.SET", f"{display} Strobe Rate", group, whole("Frames", 1, 50))
    f.add(f"{stem}.KEYFRAME.SET", f"{display} Key Frame", group, whole("Key Frame", 1, 99, "KEYFRAME"),
          whole("Frames", 0, 999, "DURATION", True))
    add_color(f, f"{stem}.BORDER", f"{display} Border", group)
    add_color(f, f"{stem}.SHADOW", f"{display} Shadow", group)


def number_of_screens():
    return percent("Screens", -400, 400)
