"""Other words for name segments, so that a search finds them as different desks call them. Search texts are upper
case, as the program searches in upper case."""

# segment, short description, long description, second search text
KEYING = [
    ("CLIP", "Threshold of the key", "", "THRESHOLD LEVEL"),
    ("GAIN", "Slope of the key", "", "SLOPE CONTRAST"),
    ("TRANSPARENCY", "Opacity of the key layer", "", "OPACITY FADE"),
    ("DENSITY", "Density of the shadow or fill", "", "STRENGTH"),
    ("FILL", "Fill or video of a key", "", "FOREGROUND VIDEO"),
    ("KEY_SOURCE", "Key signal, cut or alpha", "", "ALPHA CUT MATTE HOLE"),
    ("TYPE", "Kind of key or transition", "", "MODE KIND"),
    ("MATTE", "Colour that fills the key", "", "COLOUR FILL"),
    ("CHROMA_ANGLE", "Colour that is keyed out", "", "BLUE SCREEN GREEN SCREEN HUE"),
    ("CHROMA_SUPPRESS", "Spill suppression", "", "SPILL DESPILL"),
    ("AUTO_CHROMA", "Automatic set-up of the chroma key", "", "AUTO SETUP BLUE SCREEN GREEN SCREEN"),
    ("MASK_ENABLE", "Limits the key to a window", "", "GARBAGE MATTE WINDOW"),
    ("INVERT", "Exchanges what is seen and hidden", "", "REVERSE NEGATIVE"),
    ("PRIORITY", "Layer order of the keys", "", "LAYER ORDER STACK"),
    ("SHAPED", "Fill already multiplied by the key", "", "PREMULTIPLIED"),
]
MIXING = [
    ("PGM", "Program bus", "On-air bus, background bus A", "ON AIR TAKE"),
    ("PST", "Preset bus", "Preview bus, background bus B", "PREVIEW NEXT"),
    ("TRANSI", "Transition", "", "DISSOLVE MIX WIPE TAKE"),
    ("CUT", "Immediate change", "", "TAKE HARD CUT"),
    ("AUTO", "Transition at the set rate", "", "AUTOTRANS DISSOLVE"),
    ("FADE", "To black", "", "FTB FADE TO BLACK"),
    ("RATE", "Duration in frames", "", "SPEED TIME FRAMES"),
    ("UTIL1", "Utility bus 1", "", "UTILITY AUX BORDER FILL"),
    ("UTIL2", "Utility bus 2", "", "UTILITY AUX BORDER FILL"),
    ("WIPE1", "Main wipe generator", "", "PATTERN"),
    ("WIPE2", "Second wipe generator", "", "PATTERN"),
    ("CLEANFEED", "Output without keys", "", "CLEAN OUTPUT TEXTLESS"),
    ("SOFT", "Soft edge", "", "EDGE BLUR FEATHER"),
    ("ME0", "Program and preset, the last bank", "", "PP MAIN P/P"),
    ("ME4", "Half mix effect", "", "MEH HALF"),
]
EFFECTS = [
    ("IDPM", "Internal picture manipulator", "", "DVE SQUEEZE ZOOM RESIZE"),
    ("EDPM", "External picture manipulator", "", "DVE SQUEEZE ZOOM"),
    ("EDPM_MASTER", "All external channels together", "", "DVE GLOBAL"),
    ("DPM_EFFECT", "Stored effect of the manipulator", "", "DVE MOVE FLY"),
    ("SIZE", "Picture size", "", "ZOOM SCALE"),
    ("OPACITY", "Transparency of the channel", "", "FADE"),
    ("CROP_LEFT", "Left picture edge", "", "MASK TRIM"),
    ("CROP_RIGHT", "Right picture edge", "", "MASK TRIM"),
    ("PERSPECTIVE", "Distance of the viewer", "", "CAMERA VIEW"),
    ("EMEM", "Effects memory", "", "SNAPSHOT SCENE STORE MEMORY"),
    ("RECALL", "Takes stored values back", "", "LOAD GET"),
    ("STORE", "Keeps the present values", "", "SAVE LEARN"),
    ("TIMELINE", "Key frames of a register", "", "KEYFRAME SEQUENCE"),
]
RESOURCES = [
    ("SOURCE", "Crosspoint", "", "INPUT CROSSPOINT XPT ROUTE"),
    ("NAME_REFERENCE", "Name shown for the bus", "", "MNEMONIC LABEL"),
    ("RAMCHAN1", "First channel of the RAM recorder", "", "CLIP STORE STILL STORE"),
    ("CUE", "Goes to a timecode", "", "LOCATE SEARCH"),
    ("STANDBY_ON", "Tape loaded, heads running", "", "THREAD"),
    ("LOAD_CLIP", "Loads a clip by its number", "", "OPEN CLIP"),
    ("TEST_PATTERN", "Test signal generator", "", "BARS RAMP"),
    ("BACKGROUND1", "Colour generator 1", "", "MATTE GENERATOR"),
    ("RGB_INP_CORR", "Correction of an input in RGB", "", "PROC AMP COLOUR"),
    ("YUV_INP_CORR", "Correction of an input in YUV", "", "PROC AMP COLOUR"),
    ("YUV_CORR", "Colour correction in YUV", "", "PROC AMP"),
    ("RGB_CORR", "Colour correction in RGB", "", "PROC AMP"),
    ("LEGALIZER", "Keeps the signal in legal limits", "", "GAMUT LIMITER"),
    ("INC", "Adds to the present value", "", "RELATIVE ADD STEP"),
    ("SET", "Sets the value", "", "ABSOLUTE"),
]


def add_aliases(f):
    f.aliases.update(Keying=KEYING, Mixing=MIXING, Effects=EFFECTS, Resources=RESOURCES)
