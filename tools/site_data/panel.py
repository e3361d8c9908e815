"""Functions of the panel itself: applications, workplaces, modules, macros, buttons and displays."""

from .interface import choice, number, percent, scaled, source, switch, timecode, whole


def add_panel(f):
    f.add_indexed("WORKPLACE", "WP", "Workplace ", 1, 8)
    f.add_indexed("MFD", "MFD", "MFD ", 1, 12)
    f.add_indexed("MACRO_STORE", "MACRO", "Macros of Workplace ", 1, 8)
    f.add_indexed("SHIFT_KEY", "SHIFT", "Shift ", 1, 4)
    f.add_indexed("USER_BUTTON", "USER", "User Button ", 1, 16)
    f.add_enum("MFD_PAGE", [("PAGE_KEY", "Key Page"), ("PAGE_WIPE", "Wipe Page"), ("PAGE_DPM", "Dpm Page"),
                            ("PAGE_EMEM", "Emem Page"), ("PAGE_MACHINE", "Machine Page"), ("PAGE_AUX", "Aux Page"),
                            ("PAGE_SETUP", "Setup Page")])
    group = "PANEL_APPLICATION"
    f.add("APPLICATION.LOAD", "Application Load", group, whole("Application", 1, 99, "NUMBER"),
          sid="APPLICATION.NUMBER",
          long_desc="Loads an application with all its assignments. The crossbar buttons are dark while it loads.")
    f.add("APPLICATION.LOAD.FINISH", "Application Load Finished", group)
    f.add("APPLICATION.SAVE", "Application Save", group, whole("Application", 1, 99, "NUMBER"), sid="")
    f.add("APPLICATION.LOCK.SET", "Application Lock", group, switch())
    add_workplaces(f)
    add_macros(f)
    group = "PANEL_BUTTONS"
    f.actions("BUTTON.$USER_BUTTON", "$USER_BUTTON", group, [("PRESS", "Press"), ("RELEASE", "Release"),
              ("HOLD", "Hold")], "BUTTON_ACTION")
    f.add("BUTTON.$USER_BUTTON.COLOR.SET", "$USER_BUTTON Color", group,
          choice("Color", [("0", "Dark"), ("1", "Red"), ("2", "Green"), ("3", "Amber"), ("4", "Blue"), ("5", "White")],
                 "COLOR"))
    f.add("BUTTON.$USER_BUTTON.FLASH.SET", "$USER_BUTTON Flash", group, switch())
    group = "PANEL_LIGHT"
    f.levels("LIGHT", "Light", group, [("BUTTONS", "Buttons"), ("DISPLAYS", "Displays"), ("LAMP", "Lamp")],
             scaled("Brightness", 15), family="LIGHT_PART")
    f.add("LIGHT.DIMMER.SET", "Light Dimmer", group, percent("Dimmer"), timecode("Fade", "FADE", True))
    f.add("MONITOR.SOURCE.SET", "Panel Monitor Source", "PANEL_MONITOR", source())
    f.add("MONITOR.ZOOM.$SETINC", "Panel Monitor Zoom $SETINC", "PANEL_MONITOR", number("Zoom", 1, 8))
    f.add("STOPWATCH.START", "Stopwatch Start", "PANEL_CLOCK", timecode("From", "START", True), sid="STOPWATCH.START")
    f.add("STOPWATCH.STOP", "Stopwatch Stop", "PANEL_CLOCK")
    f.add("CLOCK.TIMECODE.SET", "Clock Timecode", "PANEL_CLOCK", timecode("Timecode"))
    add_shared_names(f)


def add_workplaces(f):
    stem, display, group = "$WORKPLACE", "$WORKPLACE", "$WORKPLACE"
    f.add(f"{stem}.MFDCOUNT.SET", f"{display} Module Count", group, whole("Modules", 0, 12))
    f.add(f"{stem}.MAINFRAME.SET", f"{display} Mainframe", group, whole("Mainframe", 1, 4))
    f.add(f"{stem}.DELEGATION.SET", f"{display} Delegation", group,
          choice("Bank", [("ME0", "PP"), ("ME1", "ME 1"), ("ME2", "ME 2"), ("ME3", "ME 3"), ("ME4", "ME h")], "BANK"))
    f.switches(stem, display, group, [("ENABLE", "Enable"), ("LOCK", "Lock"), ("MASTER", "Master"),
                                      ("BEEP", "Beep")], "WORKPLACE_SWITCH")
    f.add(f"{stem}.$SHIFT_KEY.SET", f"{display} $SHIFT_KEY", group,
          choice("Mode", [("0", "Momentary"), ("1", "Toggle"), ("2", "Locked")], "MODE"))
    f.add(f"{stem}.$MFD.$MFD_PAGE", f"{display} $MFD $MFD_PAGE", group)
    f.add(f"{stem}.$MFD.CONTRAST.SET", f"{display} $MFD Contrast", group, scaled("Contrast", 31))


def add_macros(f):
    stem, display, group = "$MACRO_STORE", "$MACRO_STORE", "$MACRO_STORE"
    register = lambda: whole("Macro", 0, 999, "REG")
    f.add(f"{stem}.RUN", f"{display} Run", group, register(), sid="",
          long_desc="Starts a macro. A macro that is already running is started from its first command.")
    f.add(f"{stem}.STOP", f"{display} Stop", group)
    f.add(f"{stem}.DELETE", f"{display} Delete", group, register(), sid="")
    f.add(f"{stem}.NAME.SET", f"{display} Rename", group, register(), sid="")
    f.add(f"{stem}.DELAY.SET", f"{display} Delay", group, register(), timecode("Delay"))


def add_shared_names(f):
    """Names that the mainframe has too; the mainframe's functions are found first."""
    f.add("EMEM.RECALL", "Emem Recall from Panel", "PANEL_EMEM", whole("Register", 0, 999, "REG"), sid="EMEM.REG")
    f.add("EMEM.STORE", "Emem Store from Panel", "PANEL_EMEM", whole("Register", 0, 999, "REG"), sid="")
    f.add("TEST_PATTERN.SELECT.SET", "Panel Test Pattern", "PANEL_MONITOR",
          choice("Pattern", [("1", "Bars 75 %"), ("3", "Ramp")], "PATTERN"))
