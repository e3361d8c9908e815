"""Functions of what the mix effects share: external manipulator, backgrounds, aux buses, machines, RAM recorder,
inputs, effects memory and control ports."""

from .families import add_color, add_correction, add_dpm
from .interface import choice, degree, number, percent, scaled, source, switch, timecode, unlimited, whole

FORMATS = [("0", "Auto"), ("1", "1080i"), ("2", "1080p"), ("3", "720p"), ("4", "576i"), ("5", "480i")]
TRANSPORT = [("PLAY", "Play"), ("STOP", "Stop"), ("PAUSE", "Pause"), ("RECORD", "Record"), ("REWIND", "Rewind"),
             ("FORWARD", "Fast Forward"), ("EJECT", "Eject"), ("STANDBY_ON", "Standby On"),
             ("STANDBY_OFF", "Standby Off"), ("PREROLL", "Preroll"), ("LOOP_PLAY", "Loop Play"),
             ("PLAY_REVERSE", "Play Reverse"), ("NEXT_CLIP", "Next Clip"), ("LAST_CLIP", "Last Clip")]


def add_external_dpm(f):
    add_dpm(f, "EDPM.$EDPM_CHANNEL", "$EDPM_CHANNEL", "$EDPM_CHANNEL.EDPM")
    f.add("$EDPM.SOURCE.SET", "$EDPM Source", "EDPM_SOURCE", source())
    stem, display, group = "EDPM_MASTER", "eDpm Master", "EDPM_MASTER"
    f.levels(stem, display, group, [("POSITION_X", "Position X"), ("POSITION_Y", "Position Y"),
                                    ("POSITION_Z", "Position Z"), ("SIZE", "Size")], percent("Value", -400, 400),
             family="MASTER_LEVEL")
    f.add(f"{stem}.ROTATION.$SETINC", f"{display} Rotation $SETINC", group, unlimited("Turns"))
    f.switches(stem, display, group, [("ENABLE", "Enable"), ("LINK_CHANNELS", "Link Channels"),
                                      ("FREEZE", "Freeze")], "MASTER_SWITCH")
    f.add(f"{stem}.EFFECT.SET", f"{display} Effect", group, whole("Effect", 1, 400, "EFFECT"))
    f.add(f"{stem}.DURATION.SET", f"{display} Duration", group, timecode("Duration"))
    stem, display, group = "DPM_EFFECT.$ME_FULL", "$ME_FULL Dpm Effect", "DpmEffect.$ME_FULL"
    f.add(f"{stem}.SELECT.SET", f"{display} Select", group, whole("Effect", 1, 400, "EFFECT"),
          choice("Direction", [("0", "Forward"), ("1", "Reverse"), ("2", "Flip Flop")], "DIRECTION", True))
    f.add(f"{stem}.POSITION.$SETINC", f"{display} Position $SETINC", group, percent("Position"))
    f.add(f"{stem}.SPEED.$SETINC", f"{display} Speed $SETINC", group, number("Speed", -4, 4))
    f.switches(stem, display, group, [("ENABLE", "Enable"), ("AUTO_REWIND", "Auto Rewind")], "EFFECT_SWITCH")
    f.actions(stem, display, group, [("RUN", "Run"), ("STOP", "Stop"), ("REWIND", "Rewind")], "EFFECT_ACTION")


def add_backgrounds(f):
    stem, display, group = "$BACKGROUND", "$BACKGROUND", "$BACKGROUND"
    add_color(f, stem, display, group)
    add_color(f, f"{stem}.WASH", f"{display} Wash", group)
    f.add(f"{stem}.WASH_PATTERN.SET", f"{display} Wash Pattern", group, whole("Pattern", 1, 20, "PATTERN"))
    f.levels(stem, display, group, [("WASH_SIZE", "Wash Size"), ("WASH_SOFT", "Wash Softness"),
                                    ("WASH_X", "Wash Position X"), ("WASH_Y", "Wash Position Y")],
             percent("Level", -100, 100), family="BACKGROUND_LEVEL")
    f.switches(stem, display, group, [("WASH_ENABLE", "Wash"), ("RAINBOW", "Rainbow"), ("CYCLE", "Color Cycle")],
               "BACKGROUND_SWITCH")
    f.add("TEST_PATTERN.SELECT.SET", "Test Pattern", "TEST_PATTERN",
          choice("Pattern", [("1", "Bars 75 %"), ("2", "Bars 100 %"), ("3", "Ramp"), ("4", "Multiburst"),
                             ("5", "Pulse and Bar"), ("6", "Zone Plate"), ("7", "Grid")], "PATTERN"))
    f.add("TEST_PATTERN.LEVEL.$SETINC", "Test Pattern Level $SETINC", "TEST_PATTERN", percent("Level"))
    f.add("TEST_PATTERN.MOTION.$SETINC", "Test Pattern Motion $SETINC", "TEST_PATTERN", number("Lines a Field", -8, 8))


def add_aux_buses(f):
    stem, display, group = "$AUX", "$AUX", "$AUX"
    f.add(f"{stem}.SOURCE.SET", "$AUX Source", group, source(), switch("Source Hold", "HOLD"))
    f.add(f"{stem}.KEY_SOURCE.SET", "$AUX Key Source", group, source("Key"))
    f.add(f"{stem}.MIX_SOURCE.SET", "$AUX Mix to Source", group, whole("Frames", 0, 999, "RATE", True), source())
    f.add(f"{stem}.RATE.SET", "$AUX Mix Rate", group, whole("Frames", 0, 999, "RATE"))
    f.add(f"{stem}.NAME_REFERENCE.SET", "$AUX Name follows Source", group, switch())
    f.add(f"{stem}.MIX.$SETINC", "$AUX Mix Position $SETINC", group, scaled("Lever", 4095))
    f.switches(stem, display, group, [("PROTECT", "Protect"), ("HOLD", "Hold"), ("TALLY", "Tally"),
                                      ("KEY_SPLIT", "Key Split"), ("BLACK", "Black"), ("PREVIEW", "Preview")],
               "AUX_SWITCH")
    f.actions(stem, display, group, [("CUT", "Cut"), ("AUTO", "Auto"), ("RESET", "Reset")], "AUX_ACTION")
    add_correction(f, f"{stem}.YUV_CORR", "$AUX", group, "YUV", "YUV Corr.")
    add_correction(f, f"{stem}.RGB_CORR", "$AUX", group, "RGB", "RGB Corr.")


def add_machine(f, family):
    stem, display, group = f"${family}", f"${family}", f"${family}"
    f.add(f"{stem}.$TRANSPORT", f"{display} $TRANSPORT", group)
    f.add(f"{stem}.$MACHINE_MARK.SET", f"{display} $MACHINE_MARK", group, timecode("Timecode"))
    f.add(f"{stem}.$MACHINE_SPEED.$SETINC", f"{display} $MACHINE_SPEED $SETINC", group, number("Speed", -16, 16))
    f.add(f"{stem}.$MACHINE_COUNT.SET", f"{display} $MACHINE_COUNT", group, whole("Number", 0, 999))
    f.add(f"{stem}.$MACHINE_SWITCH.SET", f"{display} $MACHINE_SWITCH", group, switch())
    f.add(f"{stem}.LOAD_CLIP", f"{display} Load Clip", group, whole("Clip", 1, 9999, "CLIP"),
          timecode("Start", "START", True), sid=f"{stem}.CLIP",
          long_desc="Loads a clip by its number in the clip list and cues it to the start timecode, if given.")
    f.add(f"{stem}.CUE_SOURCE.SET", f"{display} Tally Source", group, source())
    f.add(f"{stem}.EE_MODE.SET", f"{display} E to E", group,
          choice("Mode", [("0", "Auto"), ("1", "Tape"), ("2", "E to E")], "MODE"))


def add_machines(f):
    f.add_enum("TRANSPORT", TRANSPORT)
    f.add_enum("MACHINE_MARK", [("CUE", "Cue"), ("MARK_IN", "Mark In"), ("MARK_OUT", "Mark Out"),
                                ("DURATION", "Duration"), ("PREROLL_DURATION", "Preroll Duration")])
    f.add_enum("MACHINE_SPEED", [("SPEED", "Speed"), ("JOG", "Jog"), ("SHUTTLE", "Shuttle")])
    f.add_enum("MACHINE_COUNT", [("CUE_POINT", "Cue Point"), ("PRESET", "Preset"), ("DELAY", "Delay"),
                                 ("PLAYLIST", "Playlist")])
    f.add_enum("MACHINE_SWITCH", [("ENABLE", "Enable"), ("ROLL_WITH_KEY", "Roll with Key"),
                                  ("ROLL_WITH_CUT", "Roll with Cut"), ("AUTO_REWIND", "Auto Rewind"),
                                  ("LOOP", "Loop"), ("LOCAL", "Local")])
    add_machine(f, "MACHINE_RS422")
    add_machine(f, "MACHINE_LAN")


def add_ram_recorder(f):
    f.add_enum("RAM_ACTION", TRANSPORT[:5] + [("CLEAR", "Clear"), ("GRAB", "Grab Still"), ("TRIM", "Trim"),
                                              ("LOOP_PLAY", "Loop Play"), ("PLAY_REVERSE", "Play Reverse")])
    f.add_enum("RAM_SWITCH", [("LOOP", "Loop"), ("WITH_KEY", "With Key"), ("PROTECT", "Protect"),
                              ("ROLL_WITH_CUT", "Roll with Cut"), ("RECORD_ENABLE", "Record Enable")])
    f.add_enum("RAM_MARK", [("MARK_IN", "Mark In"), ("MARK_OUT", "Mark Out"), ("CUE", "Cue")])
    for family in ("RAMCHAN", "RAM"):
        stem, display, group = f"${family}", f"${family}", f"${family}"
        f.add(f"{stem}.$RAM_ACTION", f"{display} $RAM_ACTION", group)
        f.add(f"{stem}.$RAM_SWITCH.SET", f"{display} $RAM_SWITCH", group, switch())
        f.add(f"{stem}.$RAM_MARK.SET", f"{display} $RAM_MARK", group, timecode("Timecode"))
        f.add(f"{stem}.SPEED.$SETINC", f"{display} Speed $SETINC", group, percent("Speed", -400, 400))
        f.add(f"{stem}.CLIP.SET", f"{display} Clip", group, whole("Clip", 1, 999, "CLIP"))
        f.add(f"{stem}.SOURCE.SET", f"{display} Record Source", group, source(), source("Key", "KEY_INPUT"))
        f.add(f"{stem}.MODE.SET", f"{display} Mode", group,
              choice("Mode", [("0", "Clip"), ("1", "Still"), ("2", "Animation")], "MODE"),
              whole("Frames", 1, 750, "LENGTH", True))


def add_inputs(f):
    stem, display, group = "$INPUT_5", "$INPUT_5", "$INPUT_5"
    f.add(f"{stem}.KEY_ASSIGN.SET", f"{display} Key Assignment", group, source("Key"))
    f.add(f"{stem}.FORMAT.SET", f"{display} Format", group, choice("Format", FORMATS, "FORMAT"))
    f.add(f"{stem}.DELAY.SET", f"{display} Delay", group, whole("Frames", 0, 8))
    f.levels(stem, display, group, [("PHASE_H", "Phase Horizontal"), ("PHASE_V", "Phase Vertical"),
                                    ("LEVEL", "Level")], percent("Level", -100, 100), family="INPUT_LEVEL")
    f.switches(stem, display, group, [("LOCK", "Lock"), ("TALLY", "Tally"), ("FREEZE", "Freeze"),
                                      ("KEY_FOLLOWS", "Key Follows")], "INPUT_SWITCH")
    add_correction(f, "RGB_INP_CORR.$INPUT_5", "$INPUT_5", "RGB_INP_CORR.$INPUT_5", "RGB", "RGB Corr.")
    add_correction(f, "YUV_INP_CORR.$INPUT_5", "$INPUT_5", "YUV_INP_CORR.$INPUT_5", "YUV", "YUV Corr.")
    f.add("$SUBST_TABLE.$SUBST_ROW.SET", "$SUBST_TABLE $SUBST_ROW", "$SUBST_TABLE", source("Substitute"))
    f.add("$SUBST_TABLE.ENABLE.SET", "$SUBST_TABLE Enable", "$SUBST_TABLE", switch())


def add_effects_memory(f):
    group = "EMEM"
    f.actions("EMEM.$EMEM_BANK.$EMEM_REG", "Emem $EMEM_BANK $EMEM_REG", group,
              [("RECALL", "Recall"), ("STORE", "Store"), ("CLEAR", "Clear"), ("RUN", "Run")], "EMEM_ACTION")
    f.add("EMEM.$EMEM_BANK.$EMEM_REG.LOCK.SET", "Emem $EMEM_BANK $EMEM_REG Lock", group, switch())
    f.add("EMEM.$EMEM_BANK.$EMEM_REG.DURATION.SET", "Emem $EMEM_BANK $EMEM_REG Duration", group, timecode("Duration"))
    f.add("EMEM.RECALL", "Emem Recall", group, whole("Register", 0, 999, "REG"), choice("Levels", [
        ("ALL", "All Levels"), ("ENABLED", "Enabled Levels"), ("KEYS", "Keys only")], "LEVELS", True), sid="EMEM.REG",
          long_desc="Recalls the register on the enabled levels. Machines are cued, not started.")
    f.add("EMEM.STORE", "Emem Store", group, whole("Register", 0, 999, "REG"), sid="")
    f.add("EMEM.LEVEL.$ME.SET", "Emem Level $ME", group, switch())
    f.add("EMEM.EFFECT_DISSOLVE.SET", "Emem Effect Dissolve", group, switch(), whole("Frames", 0, 999, "RATE", True))
    f.add("EMEM.SPEED.$SETINC", "Emem Speed $SETINC", group, percent("Speed", 0, 400))
    f.add("EMEM.POSITION.$SETINC", "Emem Timeline Position $SETINC", group, percent("Position"))
    f.actions("EMEM.TIMELINE", "Emem Timeline", group, [("RUN", "Run"), ("STOP", "Stop"), ("REWIND", "Rewind"),
              ("NEXT", "Next Key Frame"), ("LAST", "Last Key Frame"), ("ADD_KF", "Add Key Frame")], "TIMELINE_ACTION")


def add_control_ports(f):
    f.add("$GPI.MODE.SET", "$GPI Mode", "GPI", choice("Mode", [("0", "Off"), ("1", "Edge"), ("2", "Level")], "MODE"))
    f.add("$GPI.ENABLE.SET", "$GPI Enable", "GPI", switch())
    f.add("$GPO.PULSE", "$GPO Pulse", "GPO", whole("Frames", 1, 250, "LENGTH", True), sid="")
    f.add("$GPO.STATE.SET", "$GPO State", "GPO", switch())
    f.add("$UMD.SOURCE.SET", "$UMD Source", "UMD", source())
    f.add("$UMD.BRIGHTNESS.$SETINC", "$UMD Brightness $SETINC", "UMD", scaled("Brightness", 15))
    f.add("$UMD.COLOR.SET", "$UMD Color", "UMD",
          choice("Color", [("0", "Amber"), ("1", "Green"), ("2", "Red")], "COLOR"), switch("Flash", "FLASH"))
    f.add("TALLY.GROUP.SET", "Tally Group", "TALLY", choice("Group", [(str(i), f"Group {i}") for i in range(1, 5)],
          "GROUP"), source())
    f.add("GENLOCK.PHASE.$SETINC", "Genlock Phase $SETINC", "SYSTEM", degree("Phase"))
    f.add("GENLOCK.FORMAT.SET", "Genlock Format", "SYSTEM", choice("Format", FORMATS, "FORMAT"))


def add_resources(f):
    add_external_dpm(f)
    add_backgrounds(f)
    add_aux_buses(f)
    add_machines(f)
    add_ram_recorder(f)
    add_inputs(f)
    add_effects_memory(f)
    add_control_ports(f)
