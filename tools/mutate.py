#!/usr/bin/python3
"""Plants one small fault after the other into a room and tells which of them no test notices.

  tools/mutate.py [--sample N] [--seed S] [--changed REVISION] [--budget SECONDS] [--list] PATH...

A PATH is a room or a file of one; with --changed only lines that differ from REVISION are touched. The work is done
in a copy of the tree below build/mutate, so the checkout stays as it is; each mutant rebuilds one unit and runs the
tests of its room. What came out is remembered by content (the file, the fault, the tests): a second run costs what
has changed only. Survivors that change nothing a person could notice stand, with the reason, in
tools/accepted_mutants.txt. Exit 1 when the score of a room is below its goal.
"""
import argparse
import hashlib
import json
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutate"
TREE = WORK / "tree"
RESULTS = Path(os.environ.get("XDG_CACHE_HOME", Path.home() / ".cache")) / "tessaly-mutants.jsonl"
ACCEPTED = ROOT / "tools" / "accepted_mutants.txt"
ROOMS = ["platform", "xctl", "dictionary", "values", "classic", "model", "link", "review", "cli", "panelsim", "editors",
         "windows", "app"]
GOALS = {"app": 80, "editors": 80, "windows": 80}  # percent killed of the mutants that change anything
GOAL = 90
SLOWEST = 120  # seconds that the tests of a room may take over a mutant; then it counts as noticed
CODE = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])+\'|//[^\n]*|R"\((?:.|\n)*?\)"')

# What is replaced, by what, in a line whose texts and comments are blanked out.
SWAPS = [
    (re.compile(r" && "), [" || "]),
    (re.compile(r" \|\| "), [" && "]),
    (re.compile(r" == "), [" != "]),
    (re.compile(r" != "), [" == "]),
    (re.compile(r" < "), [" <= "]),
    (re.compile(r" <= "), [" < "]),
    (re.compile(r" > "), [" >= "]),
    (re.compile(r" >= "), [" > "]),
    (re.compile(r"(?<!\0) \+ (?!\0)"), [" - "]),
    (re.compile(r" - "), [" + "]),
    (re.compile(r"\btrue\b"), ["false"]),
    (re.compile(r"\bfalse\b"), ["true"]),
    (re.compile(r"(?<![\w.'])\d+(?![\w.'])"), [lambda text: str(int(text, 10) + 1)]),
]
CONDITION = re.compile(r"^(\s*(?:\} else )?if \()(.*)(\)(?: \{|\s[^(){}]*;|)\s*)$")
STATEMENT = re.compile(r"^\s+(?!return\b|else\b|if\b|for\b|while\b|using\b|case\b|throw\b|delete\b|break\b|continue\b)"
                       r"(?:[\w:>.\-]+(?:\[[^\]]*\])?\(.*\)|[\w.>\-]+(?:\[[^\]]*\])? [-+|&]?= .*|(?:\+\+|--)[\w.>\-]+);$")
ARGUMENTS = re.compile(r"(?<=\()([\w.\->]+), ([\w.\->]+)(?=\))")


class Mutant:
    def __init__(self, path, number, before, after, kind):
        self.path, self.number, self.before, self.after, self.kind = path, number, before, after, kind

    @property
    def name(self):
        return f"{self.path}: {self.before.strip()} -> {self.after.strip() or ';'}"

    @property
    def room(self):
        return self.path.split("/")[0]


def blanked(text):
    """The same length, with texts and comments blanked out."""
    return CODE.sub(lambda found: re.sub(r"[^\n]", "\0", found.group(0)), text)


def balanced(text):
    depth = 0
    for letter in text:
        depth += (letter == "(") - (letter == ")")
        if depth < 0:
            return False
    return depth == 0


def mutants_of(path, lines_wanted=None):
    text = (ROOT / path).read_text(encoding="utf-8")
    lines, code = text.split("\n"), blanked(text).split("\n")
    for number, (line, plain) in enumerate(zip(lines, code)):
        if lines_wanted is not None and number + 1 not in lines_wanted:
            continue
        if not plain.strip("\0 ") or ".reserve(" in plain or plain.lstrip().startswith(("#", "namespace", "template", "static_assert", "using")):
            continue

        def made(after, kind):
            return Mutant(path, number, line, after, kind)

        condition = CONDITION.match(plain)
        if condition and balanced(condition.group(2)):
            start, end = condition.start(2), condition.end(2)
            inner = line[start:end]
            first = inner.rfind("; ") + 2 if "; " in condition.group(2) else 0
            if first < 2 or balanced(inner[first:]):
                yield made(f"{line[:start]}{inner[:first]}!({inner[first:]}){line[end:]}", "condition")
        if STATEMENT.match(plain) and balanced(plain):
            yield made("", "statement")
        if not plain.lstrip().startswith(("constexpr", "inline constexpr", "enum")):
            for pattern, others in SWAPS:
                for found in pattern.finditer(plain):
                    for other in others:
                        put = other(found.group(0)) if callable(other) else other
                        yield made(line[:found.start()] + put + line[found.end():], "swap")
        for found in ARGUMENTS.finditer(plain):
            one, two = found.groups()
            if one != two:
                yield made(f"{line[:found.start()]}{two}, {one}{line[found.end():]}", "arguments")


def changed_lines(revision):
    wanted, path = {}, None
    diff = subprocess.run(["git", "diff", "-U0", revision, "--", *ROOMS], cwd=ROOT, text=True, check=True,
                          capture_output=True).stdout
    for line in diff.splitlines():
        if line.startswith("+++ "):
            path = line[6:]
        elif found := re.match(r"@@ -\S+ \+(\d+)(?:,(\d+))? @@", line):
            start, count = int(found[1]), int(found[2] or 1)
            wanted.setdefault(path, set()).update(range(start, start + count))
    return wanted


def run(command, seconds=None, **more):
    """Exit code; None when the time is over, with all that it has started ended."""
    with subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                          **more) as process:
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return None


def prepare(rooms):
    TREE.mkdir(parents=True, exist_ok=True)
    files = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT, check=True,
                           capture_output=True).stdout.decode().split("\0")
    kept = set()
    for name in filter(None, files):
        source, copy = ROOT / name, TREE / name
        if not source.is_file():
            continue
        kept.add(copy)
        if copy.is_file() and copy.read_bytes() == source.read_bytes():
            continue
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(source, copy)
        shutil.copymode(source, copy)
    for copy in [path for path in TREE.rglob("*") if path.is_file() and path not in kept and "build" not in path.parts]:
        copy.unlink()
    settings = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DTESSALY_BENCH=OFF"]
    if shutil.which("ccache"):
        settings.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
    subprocess.run(["cmake", "-G", "Ninja", "-S", TREE, "-B", WORK / "build", *settings], check=True,
                   stdout=subprocess.DEVNULL)
    subprocess.run(["ninja", "-C", WORK / "build", *(f"test_{room}" for room in rooms)], check=True)
    for room in rooms:
        if tests(room) != 0:
            sys.exit(f"the tests of {room}/ fail without a mutant")


def tests(room):
    program = WORK / "build" / "bin" / f"test_{room}"
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1"}
    return run([program], SLOWEST, env=environment, cwd=WORK / "build")


def judge(mutant):
    """"killed", "lives", or "void" when it does not compile."""
    file = TREE / mutant.path
    text = file.read_text(encoding="utf-8")
    lines = text.split("\n")
    lines[mutant.number] = mutant.after
    try:
        file.write_text("\n".join(lines), encoding="utf-8")
        if run(["ninja", "-C", WORK / "build", f"test_{mutant.room}"], 600) != 0:
            return "void"
        return "lives" if tests(mutant.room) == 0 else "killed"
    finally:
        file.write_text(text, encoding="utf-8")


def sum_of(paths):
    digest = hashlib.sha256()
    for path in sorted(paths):
        digest.update(path.read_bytes())
    return digest.hexdigest()


def accepted():
    """Mutants by name, each with the reason behind " # "."""
    if not ACCEPTED.exists():
        return {}
    lines = [line for line in ACCEPTED.read_text(encoding="utf-8").splitlines() if line and not line.startswith("#")]
    return dict(line.rsplit(" # ", 1) for line in lines)


def chosen(arguments):
    wanted = changed_lines(arguments.changed) if arguments.changed else None
    paths = arguments.paths or (ROOMS if wanted is None else sorted(wanted))
    files = []
    for name in paths:
        path = ROOT / name
        found = sorted(path.rglob("*.cpp")) if path.is_dir() else [path]
        files += [str(each.relative_to(ROOT)) for each in found if each.suffix == ".cpp" and each.name != "main.cpp"]
    files = [name for name in files if name.split("/")[0] in ROOMS and (wanted is None or name in wanted)]
    mutants = [mutant for name in files for mutant in mutants_of(name, None if wanted is None else wanted[name])]
    random.Random(arguments.seed).shuffle(mutants)
    return mutants[:arguments.sample] if arguments.sample else mutants


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("paths", nargs="*")
    parser.add_argument("--sample", type=int)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--changed", metavar="REVISION")
    parser.add_argument("--budget", type=float, default=float("inf"))
    parser.add_argument("--list", action="store_true")
    arguments = parser.parse_args()
    mutants = chosen(arguments)
    if arguments.list:
        for mutant in mutants:
            print(f"{mutant.path}:{mutant.number + 1}: {mutant.kind}: {mutant.name.split(': ', 1)[1]}")
        return 0
    end = time.monotonic() + arguments.budget
    rooms = sorted({mutant.room for mutant in mutants})
    known = {}
    if RESULTS.exists():
        for line in RESULTS.read_text(encoding="utf-8").splitlines():
            known.update(json.loads(line))
    if rooms:
        prepare(rooms)
    units = {mutant.path: sum_of([ROOT / mutant.path]) for mutant in mutants}
    suites = {room: sum_of([*(ROOT / "tests" / room).rglob("*.*"), *(ROOT / "tests" / "support").rglob("*.*")])
              for room in rooms}
    reasons, score, left = accepted(), {room: [0, 0] for room in rooms}, 0
    RESULTS.parent.mkdir(parents=True, exist_ok=True)
    with RESULTS.open("a", encoding="utf-8") as kept:
        for mutant in mutants:
            if mutant.name in reasons:
                continue
            key = f"{units[mutant.path]} {suites[mutant.room]} {mutant.number} {mutant.after}"
            if key not in known:
                if time.monotonic() > end:
                    left += 1
                    continue
                known[key] = judge(mutant)
                kept.write(json.dumps({key: known[key]}) + "\n")
                kept.flush()
            if known[key] == "void":
                continue
            score[mutant.room][0] += known[key] == "killed"
            score[mutant.room][1] += 1
            if known[key] == "lives":
                print(f"{mutant.path}:{mutant.number + 1}: lives: {mutant.name.split(': ', 1)[1]}", flush=True)
    missed = False
    for room, (killed, tried) in score.items():
        goal = GOALS.get(room, GOAL)
        percent = 100 * killed / tried if tried else 100
        missed = missed or percent < goal
        print(f"{room}/: {killed} of {tried} noticed, {percent:.0f} % (goal {goal} %)")
    if left:
        print(f"{left} not tried: the time was over")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
