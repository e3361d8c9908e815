#!/usr/bin/python3
"""Starts and ends the editor as the system does: check_start.py PROGRAM_FOLDER SOURCE_FOLDER

Fails when a second start does not lead to the first window, when a start prints the toolkit's remarks, or when a
signal ends the program without its settings, its exit code 0 and its lock given back.
"""
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

program, source = Path(sys.argv[1]) / "tessaly", Path(sys.argv[2])
LONGEST = 60  # seconds
faults = []
environment = {name: value for name, value in os.environ.items()
               if name not in ("XDG_RUNTIME_DIR", "TESSALY_ROOT", "DISPLAY", "WAYLAND_DISPLAY")}
environment["QT_QPA_PLATFORM"] = "offscreen"


def expect(holds, what):
    if not holds:
        faults.append(what)


def wait_for(condition, what):
    deadline = time.monotonic() + LONGEST
    while not condition():
        if time.monotonic() > deadline:
            raise TimeoutError(what)
        time.sleep(0.01)


def opened(root):
    return subprocess.Popen([program, "--root", root], env=environment, stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


def opens(root):
    """The program on a root, once its window is there: it then listens to a second start."""
    started = opened(root)
    lock = root / ".tessaly.lock"
    wait_for(lambda: started.poll() is not None or (lock.exists() and str(started.pid) in lock.read_text()), "the lock")
    return started


def try_signal(number, root, settings):
    first = opens(root)
    # Several at once, which end before the threads of their start have.
    for other in [opened(root) for _ in range(6)]:
        said, errors = other.communicate(timeout=LONGEST)
        expect(other.returncode == 0 and "comes to the front" in said and not errors,
               f"a second start: {other.returncode} {said} {errors}")
    settings.unlink(missing_ok=True)
    first.send_signal(number)
    _, errors = first.communicate(timeout=LONGEST)
    expect(first.returncode == 0, f"{number.name}: exit code {first.returncode}")
    expect(settings.exists(), f"{number.name}: no settings")
    expect(not errors, f"{number.name}: {errors}")
    expect(not (root / ".tessaly.lock").exists(), f"{number.name}: the lock is left")


with tempfile.TemporaryDirectory() as folder:
    environment["XDG_CONFIG_HOME"] = folder
    site = Path(folder) / "site"
    shutil.copytree(source / "site/c", site / "c")
    for ending in (signal.SIGTERM, signal.SIGHUP):
        try_signal(ending, site, site / "c/programme/RV48/bin/MacroFid/Settings.dat")
print("\n".join(faults) or "started, raised and ended")
sys.exit(bool(faults))
