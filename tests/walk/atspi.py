#!/usr/bin/python3
"""Works the window as a screen reader's hands do, through the accessibility bus alone: a value is changed and
saved, then one macro is taken over into another and saved. Nothing is known of keys, of the mouse or of where
something stands on the screen.
  atspi.py           the program runs already, on a copy of the sample site
"""
import sys
import time

import pyatspi

LONGEST = 30  # seconds
APPLICATION = "Evening News"


def below(node):
    for index in range(node.childCount):
        child = node.getChildAtIndex(index)
        if child is not None:
            yield child
            yield from below(child)


def awaited(what, look):
    deadline = time.monotonic() + LONGEST
    while time.monotonic() < deadline:
        try:
            found = look()
            if found:
                return found
        except Exception:  # what is being looked at may go while it is looked at
            pass
        time.sleep(0.05)
    raise SystemExit(f"atspi: waited in vain for {what}")


def named(room, role, name, showing=True):
    """The first one whose name is so, or begins so; what a closed menu holds does not show."""
    def look():
        return next((node for node in below(room)
                     if node.getRoleName() == role and node.name.startswith(name)
                     and (not showing or node.getState().contains(pyatspi.STATE_SHOWING))), None)
    return awaited(f'the {role} "{name}"', look)


def window(title):
    def look():
        desktop = pyatspi.Registry.getDesktop(0)
        for application in desktop:
            for top in application or ():
                if top is not None and top.name.startswith(title):
                    return top
        return None
    return awaited(f'the window "{title}"', look)


def act(node, *names):
    actions = node.queryAction()
    for index in range(actions.nActions):
        if actions.getName(index) in names:
            actions.doAction(index)
            return
    raise SystemExit(f'atspi: "{node.name}" can only {[actions.getName(i) for i in range(actions.nActions)]}')


def press(room, name, role="push button"):
    button = named(room, role, name)
    awaited(f'"{name}" to be enabled', lambda: button.getState().contains(pyatspi.STATE_ENABLED))
    act(button, "Press", "press")


def rows(room, name):
    return [row.name for row in awaited(f"rows of {name}", lambda: list(named(room, "list", name)))]


def choose(room, list_name, beginning):
    row = named(named(room, "list", list_name), "list item", beginning)
    if not row.getState().contains(pyatspi.STATE_SELECTED):
        act(row, "Toggle", "toggle")
    awaited(f'"{beginning}" to be chosen', lambda: named(named(room, "list", list_name), "list item", beginning)
            .getState().contains(pyatspi.STATE_SELECTED))


def open_macro(pane, number):
    choose(pane, "Applications", APPLICATION)
    choose(pane, "Macros", number)
    return rows(pane, "Macro Commands")


def say(text):
    print(f"atspi: {text}", flush=True)


def check_order(main):
    """What is on the left comes first: pane A before pane B, and in each the lists in their order."""
    wanted = [f"{name} {pane}" for pane in "AB"
              for name in ("Applications", "Control Panels", "Workplaces", "Macros", "Macro Commands")]
    panes = [node for node in below(main)
             if node.getRoleName() == "panel" and node.name.startswith("Macro Overview")]
    found = [f"{node.name} {pane.name[-1]}" for pane in panes for node in below(pane) if node.getRoleName() == "list"]
    if found != wanted:
        raise SystemExit(f"atspi: the lists come as {found}")


def change_a_value(main):
    say("changes a value of macro 010 and saves it")
    pane = named(main, "panel", "Macro Overview A")
    commands = open_macro(pane, "010")
    command = next(text for text in commands if "Wash Size" in text)
    choose(pane, "Macro Commands", command)
    press(pane, "modify")
    dialog = window("Modify selected command")
    value = named(dialog, "text", "Value")
    value.queryEditableText().setTextContents("37")
    press(dialog, "Modify Command")
    awaited("the changed line", lambda: any("37.0%" in text for text in rows(pane, "Macro Commands")))
    press(pane, "Save")


def take_over(main):
    say("compares it with macro 003, takes all of it over and saves")
    pane = named(main, "panel", "Macro Overview B")
    open_macro(pane, "003")
    act(named(main, "menu item", "Both Panes", showing=False), "Press", "press")
    comparison = window("Compare")
    press(comparison, "Take All into B")
    press(pane, "Save")
    press(comparison, "Close")


def main():
    top = window("Corvane XL Macro Viewer / Editor")
    awaited("the rows of the applications",
            lambda: APPLICATION in rows(named(top, "panel", "Macro Overview A"), "Applications"))
    check_order(top)
    change_a_value(top)
    take_over(top)
    return 0


if __name__ == "__main__":
    sys.exit(main())
