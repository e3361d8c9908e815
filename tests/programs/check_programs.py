#!/usr/bin/env python3
"""What the three programs say of themselves: check_programs.py PROGRAM_FOLDER SOURCE_FOLDER VERSION

Fails when --help, --version or a wrong use breaks the common shape, which scripts rely on.
"""
import os
import subprocess
import sys
from pathlib import Path

WRONG = {
    "tessaly": [["--bogus"], ["word"], ["--root"], ["--ftp-port", "0"], ["--ftp-port", "port"]],
    "tessaly-cli": [["--bogus"], ["word"], ["--root"], [], ["show"]],
    "tessaly-panelsim": [["--bogus"], ["word", "word"], ["--root"], ["--mfd", "x"]],
}

programs, source, version = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
faults = []
os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")


def expect(holds, what):
    if not holds:
        faults.append(what)


def run(name, words):
    done = subprocess.run([programs / name, *words], stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60)
    return done.returncode, done.stdout, done.stderr


def check_texts(name):
    code, out, errors = run(name, ["--help"])
    expect(code == 0 and not errors, f"{name} --help: exit {code}, {errors}")
    expect(out.startswith(f"usage: {name} "), f"{name} --help begins {out[:40]!r}")
    expect(run(name, ["--version"]) == (0, f"{name} {version}\n", ""), f"{name} --version")
    for words in WRONG[name]:
        code, wrong, errors = run(name, words)
        expect(code == 2 and not wrong, f"{name} {words}: exit {code}, {wrong}")
        expect(f"usage: {name} " in errors, f"{name} {words}: no usage in {errors!r}")


for program in WRONG:
    check_texts(program)
print("\n".join(faults) or "the programs say the same of themselves everywhere")
sys.exit(bool(faults))
