#!/usr/bin/python3
"""Does what the guide says: guide_steps.py GUIDE HEADING PROGRAM_ID [NAME=TEXT ...]

The numbered steps under a heading are done word by word, as a person does them who reads: keys are pressed, what stands
in `code` is typed, a window "..." is waited for, and so is what the foot of the window says or a button shows, in
"...". What stands in brackets is only told. NAME=TEXT puts the text in the place of a word that the guide cannot know,
such as an address.
The keys go to the screen; the eyes are those of a screen reader.
"""
import re
import subprocess
import sys
import time
from pathlib import Path

import pyatspi

LONGEST = 30  # seconds that anything may take on a busy machine
KEYS = {"Enter": "Return", "Esc": "Escape", "Space": "space", "Del": "Delete", "Plus": "plus"}
NAMED = "Enter|Esc|Tab|Space|Del|Home|End|Up|Down|Left|Right|F[0-9]+"
DEED = re.compile(
    r"\([^)]*\)"
    r'|(?:foot says|button shows) "(?P<says>[^"]+)"'
    r'|window "(?P<window>[^"]+)"'
    r"|`(?P<type>[^`]+)`"
    rf"|(?<![\w\"])(?P<keys>(?:(?:Ctrl|Alt|Shift)\+)+(?:{NAMED}|[A-Z0-9])|{NAMED})(?![\w\"])")


def steps_of(guide, heading):
    section = re.search(rf"^## {re.escape(heading)}\n(.*?)(?=^## |\Z)", guide, re.S | re.M).group(1)
    return [" ".join(step.split()) for step in re.findall(r"^\d+\. (.*?)(?=^\d+\. |^$|\Z)", section, re.S | re.M)]


def hands(*words):
    subprocess.run(["xdotool", *words], check=True)


def await_seen(what, seen):
    deadline = time.monotonic() + LONGEST
    while not seen():
        if time.monotonic() > deadline:
            sys.exit(f"guide: waited in vain for {what}")
        time.sleep(0.1)


def active_title():
    return subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True).stdout.strip()


SEEN = (pyatspi.ROLE_LABEL, pyatspi.ROLE_PUSH_BUTTON)


def texts(program):
    """All labels and buttons of the program, whatever window they are in."""
    for application in pyatspi.Registry.getDesktop(0):
        if application is not None and application.get_process_id() == program:
            yield from pyatspi.findAllDescendants(application, lambda part: part.getRole() in SEEN)


def says(program, text):
    try:
        return any(part.name.startswith(text) for part in texts(program))
    except Exception:  # a window that closes while it is read
        return False


def do(deed, program, told):
    if deed["says"]:
        await_seen(f'"{deed["says"]}"', lambda: says(program, deed["says"]))
    elif deed["window"]:
        await_seen(f'the window "{deed["window"]}"', lambda: active_title().startswith(deed["window"]))
    elif deed["type"]:
        hands("type", "--delay", "20", "--", told.get(deed["type"], deed["type"]))
    elif deed["keys"]:
        parts = [KEYS.get(part, part) for part in deed["keys"].split("+")]
        hands("key", "--delay", "40", "+".join([part.lower() for part in parts[:-1]] +
                                             [parts[-1].lower() if len(parts[-1]) == 1 else parts[-1]]))
        time.sleep(0.15)


def main():
    guide, heading, program = Path(sys.argv[1]).read_text(encoding="utf-8"), sys.argv[2], int(sys.argv[3])
    told = dict(word.split("=", 1) for word in sys.argv[4:])
    steps = steps_of(guide, heading)
    if not steps:
        sys.exit(f'guide: no steps under "{heading}"')
    for number, step in enumerate(steps, 1):
        print(f"guide: {heading} {number}: {step}", flush=True)
        for deed in DEED.finditer(step):
            do(deed, program, told)


main()
