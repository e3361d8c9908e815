#!/usr/bin/python3
"""What the three programs say of themselves: check_programs.py PROGRAM_FOLDER SOURCE_FOLDER VERSION

Fails when --help, --version or a wrong use breaks the common shape, which scripts rely on, when a manual page
names other options or commands than --help, or when a version stands somewhere that is not the programs' own.
"""
import os
import re
import subprocess
import sys
from pathlib import Path

WRONG = {
    "tessaly": [["--bogus"], ["word"], ["--root"], ["--ftp-port", "0"], ["--ftp-port", "port"],
                ["--language", "xx"], ["--language", ""]],
    "tessaly-cli": [["--bogus"], ["word"], ["--root"], [], ["show"], ["show", "x", "--raw=yes"], ["help", "word"]],
    "tessaly-panelsim": [["--bogus"], ["word", "word"], ["--root"], ["--mfd", "x"]],
}

programs, source, version = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
faults = []
for name in ("QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"):
    os.environ.pop(name, None)  # none of this needs a display


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


def manual_of(name):
    """A manual page up to its examples, without the marks for fonts and hyphens."""
    text = (source / "packaging/man" / f"{name}.1").read_text().partition("\n.SH EXAMPLES")[0]
    return re.sub(r"\\f.|\\&|\"", "", text).replace("\\-", "-")


def options_in(text):
    return set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", text))


def check_manual(name):
    shown, manual = options_in(run(name, ["--help"])[1]), options_in(manual_of(name))
    expect(shown == manual, f"{name}: only in --help or only in the manual: {sorted(shown ^ manual)}")


def check_commands():
    shown = set(re.findall(r"^  ([a-z][a-z-]*) ", run("tessaly-cli", ["--help"])[1], re.M))
    manual = set(re.findall(r"^\.TP\n\.BR ([a-z][a-z-]*) ", manual_of("tessaly-cli"), re.M))
    expect(shown == manual, f"commands only in --help or only in the manual: {sorted(shown ^ manual)}")


def check_versions():
    for file, pattern in [("CHANGELOG.md", r"^## \[(\d\S*)\]"), ("packaging/debian/changelog", r"^tessaly \((.*)-\d+\)"),
                          ("packaging/desktop/org.tessaly.Tessaly.metainfo.xml", r'<release version="(.*?)"')]:
        newest = re.search(pattern, (source / file).read_text(), re.M).group(1)
        expect(newest == version, f"{file}: the newest version is {newest}, the programs' {version}")


for program in WRONG:
    check_texts(program)
    check_manual(program)
check_commands()
check_versions()
print("\n".join(faults) or "programs, manual pages and versions agree")
sys.exit(bool(faults))
