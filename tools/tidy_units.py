#!/usr/bin/python3
"""Runs clang-tidy over the rooms, several files to a compilation.

Most of the time of a check goes into the headers of the libraries, so files are checked in groups. One that does not
compile in this way is checked again file by file.
"""
import argparse
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from build_units import units_of
from changed_files import ROOT, changed_since
from source_groups import groups_of

ROOMS = ["app", "editors", "windows", "widgets", "cli", "panelsim", "review", "link", "model", "classic", "values", "dictionary", "platform",
         "xctl"]
COMPILER = re.compile(r"(^|/)(c|g|clang)\+\+(-\d+)?$")
ERROR = "clang-diagnostic-error"
UNKNOWN = re.compile(r"-Wno-stringop|-Wshadow=|-Wno-subobject")
HUGE_PAGES = {"GLIBC_TUNABLES": "glibc.malloc.hugetlb=1"}  # they spare it a tenth of its time


def arguments_of(unit):
    """The compiler's arguments without the launcher, the compiler, the input, the output and what clang does not know."""
    words = unit.words[next(i for i, word in enumerate(unit.words) if COMPILER.search(word)) + 1:]
    result, skip = [], False
    for word in words:
        if skip:
            skip = False
        elif word in ("-o", "-MF", "-MT", "-c", "-include"):
            skip = True
        elif word not in ("-MD", "-Werror", "-Winvalid-pch") and not UNKNOWN.match(word):
            result.append(word)
    return result


class Tidy:
    def __init__(self, root, build):
        self.root = root
        self.scratch = build / "tidy"
        self.scratch.mkdir(exist_ok=True)
        self.units = units_of(build)

    def arguments(self, files):
        """Those of the first file, with what others define beside it."""
        words = arguments_of(self.units[files[0]])
        for path in files[1:]:
            words += [word for word in arguments_of(self.units[path])
                      if word.startswith("-D") and word not in words]
        return words

    def check(self, files):
        unit = self.scratch / f"{files[0].parent.name}_{files[0].stem}.cpp"
        unit.write_text("".join(f'#include "{path}"\n' for path in files), encoding="utf-8")
        command = ["clang-tidy", "--quiet", f"--config-file={self.root}/.clang-tidy",
                   "--checks=-bugprone-suspicious-include", str(unit), "--", *self.arguments(files)]
        # In a group it would tell of names that no compiler sees together.
        command.append("-Wno-shadow" if len(files) > 1 else "-Wshadow")
        done = subprocess.run(command, cwd=self.units[files[0]].folder, env=os.environ | HUGE_PAGES, capture_output=True,
                              text=True, check=False)
        if len(files) > 1 and ERROR in done.stdout:
            return "".join(self.check([path]) for path in files)
        if done.returncode == 0:
            return ""
        return done.stdout or done.stderr


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path, help="build folder with a compile_commands.json")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--changed", metavar="REVISION", help="only files that differ from it, or whose header does")
    parser.add_argument("rooms", nargs="*")
    options = parser.parse_args()
    tidy = Tidy(ROOT, options.build.resolve())
    changed = changed_since(options.changed) if options.changed else set()
    everything = not options.changed or ROOT / ".clang-tidy" in changed
    # What is for another system is not built here.
    built = {room: [path for path in sorted((ROOT / room).glob("*.cpp"))
                    if path in tidy.units and (everything or path in changed)]
             for room in options.rooms or ROOMS}
    units = [unit for files in built.values() for unit in groups_of(files)]
    found = ""
    with ThreadPoolExecutor(options.jobs) as pool:
        for text in pool.map(tidy.check, units):
            found += text
            sys.stdout.write(text)
            sys.stdout.flush()
    print(f"clang-tidy: {len(units)} units" + ("" if found else ", clean"))
    return 1 if found else 0


sys.exit(main())
