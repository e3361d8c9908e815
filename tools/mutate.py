#!/usr/bin/python3
"""Plants one small fault after the other into a room and tells which of them no test notices.

  tools/mutate.py [--build DIR] [--sample N] [--seed S] [--changed REVISION] [--budget SECONDS] [--goal PERCENT]
                  [--jobs N] [--list] PATH...

A PATH is a room or a file of one; --sample takes so many mutants of each room; with --changed only lines that differ
from REVISION are touched. Nothing of the checkout or of the built tree is changed: each mutant compiles one unit, links
it with the rest of its room's tests and runs them. What came out is remembered by content (the file, the fault, the
tests): a second run costs what has changed only. A unit that no test of its room includes is asked of the tests of the
plain rooms that use it, too. Where tessaly-screenshots is built and no --budget is given, the kept pictures of all
windows are asked what the tests of a room with windows do not notice. Survivors that change nothing a person could
notice stand, with the reason, in tools/accepted_mutants.txt. Exit 1 when the score of a room is below its goal, with
--goal when that of all together is below that, and they are not too few to tell.
"""
import argparse
import functools
import hashlib
import json
import os
import re
import shlex
import signal
import subprocess
import sys
import tempfile
import threading
import time
from multiprocessing.pool import ThreadPool
from pathlib import Path

from build_units import units_of

ROOT = Path(__file__).resolve().parent.parent
RESULTS = Path(os.environ.get("XDG_CACHE_HOME", Path.home() / ".cache")) / "tessaly-mutants.jsonl"
SCREENSHOTS, CAMERA = ROOT / "tests" / "screenshots", "tessaly-screenshots"
ACCEPTED = ROOT / "tools" / "accepted_mutants.txt"
ROOMS = ["platform", "xctl", "dictionary", "values", "classic", "model", "link", "review", "cli", "panelsim", "editors",
         "windows", "app"]
PLAIN = ["platform", "xctl", "dictionary", "values", "classic", "model", "link", "review", "cli", "panelsim"]
PICTURES = {"light": [], "dark": ["--palette", "dark"], "german": ["--language", "de"]}  # as tests/CMakeLists.txt has them
GOALS = {"app": 80, "editors": 80, "windows": 80}  # percent killed of the mutants that change anything
GOAL = 90
FEWEST = 8  # of which a --goal over all is asked: of fewer, one that no test can notice is a third
SLOWEST = 300  # seconds that a step may take; a mutant whose tests are not over by then counts as noticed
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
# Not where the order means nothing.
ARGUMENTS = re.compile(r"(?<!\bmin\()(?<!\bmax\()(?<!\bminmax\()(?<!\bmin<std::size_t>\()(?<!\bmax<std::size_t>\()"
                       r"(?<!\bequalNoCase\()(?<!\bswap\()(?<=\()([\w.\->]+), ([\w.\->]+)(?=\))")


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
        if not plain.strip("\0 ") or ".reserve(" in plain or plain.lstrip().startswith(("#", "namespace", "template", "static_assert", "assert(", "using")):
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


@functools.lru_cache(maxsize=None)
def including(header):
    """Files that include a header, tests among them, be it by way of a campaign's header."""
    line = f'#include "{header}"'
    files = [file for folder in [*PLAIN, "fuzz", "tests"] for file in (ROOT / folder).rglob("*.[ch]*")]
    found = [str(file.relative_to(ROOT)) for file in files if line in file.read_text(encoding="utf-8")]
    return found + [user for file in found if file.startswith("fuzz/") for user in including(file)]


@functools.lru_cache(maxsize=None)
def asked(path):
    """The rooms whose tests are asked: the unit's own, and who uses what no test of it includes."""
    own, users = path.split("/")[0], including(path[:-3] + "h")
    if any(user.startswith(f"tests/{own}/") for user in users):
        return [own]
    rooms = {user.removeprefix("tests/").split("/")[0] for user in users}
    return [own, *sorted(rooms.intersection(PLAIN) - {own})]


def run(command, seconds, **more):
    """Exit code; None when the time is over, with all that it has started ended."""
    with subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                          **more) as process:
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return None


class Build:
    """A built tree, of which nothing is changed: a mutant's unit is compiled beside it, and a room's tests are linked
    with that object in front of the room's archive, whose own is then left out."""

    def __init__(self, path):
        self.path = path
        self.units = units_of(path)
        self.links = {}
        self.pictures = False
        self.seconds = {}  # by room: the time that its tests are given over a mutant

    def check(self, room):
        """That the room's tests hold without a mutant, and how long they take."""
        began = time.monotonic()
        if tests(self.path / "bin" / f"test_{room}", SLOWEST) != 0:
            sys.exit(f"the tests of {room}/ fail without a mutant")
        self.seconds[room] = 10 + 2 * (time.monotonic() - began)

    def check_pictures(self):
        if not (self.path / "bin" / CAMERA).exists():
            return
        self.pictures = self.same_pictures(self.path / "bin" / CAMERA)
        if not self.pictures:
            sys.exit("the windows look different without a mutant")

    def same_pictures(self, camera):
        """Asked twice before they differ: a busy machine shows what takes long."""
        with tempfile.TemporaryDirectory() as folder:
            environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "HOME": folder, "XDG_CONFIG_HOME": folder,
                           "FONTCONFIG_FILE": str(SCREENSHOTS / "fonts.conf")}
            return all(any(run([camera, *options, "--against", SCREENSHOTS / "kept" / kind, ROOT / "site", folder],
                               SLOWEST, env=environment) == 0 for _ in range(2)) for kind, options in PICTURES.items())

    def link(self, target):
        if target not in self.links:
            lines = subprocess.run(["ninja", "-C", self.path, "-t", "commands", target], check=True, text=True,
                                   capture_output=True).stdout.splitlines()
            self.links[target] = next(shlex.split(line.split("&&")[1]) for line in reversed(lines) if f"-o bin/{target} " in line)
        return list(self.links[target])

    def compile(self, mutant, source, made):
        unit = self.units[ROOT / mutant.path]
        if unit.grouped:  # the rest of the group with it, as its object takes the place of the group's
            group = unit.source.read_text(encoding="utf-8").replace(f'"{ROOT / mutant.path}"', f'"{source}"')
            source = source.with_name(unit.source.name)
            source.write_text(group, encoding="utf-8")
        command = list(unit.words)
        command[command.index("-o") + 1] = str(made)
        command[command.index("-c") + 1] = str(source)
        # What is precompiled goes with the flags that it was compiled with.
        return run(command + ["-w"] + ([] if "-Winvalid-pch" in command else ["-O0"]), SLOWEST, cwd=self.path) == 0

    def program(self, target, made, program):
        command = self.link(target)
        place = command.index("-o")
        command[place + 1] = str(program)
        command.insert(place + 2, str(made))
        return run(command, SLOWEST, cwd=self.path) == 0

    def judge(self, mutant):
        return self.compiled(mutant, lambda made: self.judge_by_tests(mutant, made))

    def look(self, mutant):
        return self.compiled(mutant, lambda made: self.noticed(CAMERA, made, lambda camera: not self.same_pictures(camera)))

    def compiled(self, mutant, judge):
        """"killed", "lives", or "void" when it does not compile."""
        stem = Path(mutant.path).stem
        with tempfile.TemporaryDirectory() as folder:
            source, made = Path(folder) / f"{stem}.cpp", Path(folder) / f"{stem}.o"
            lines = (ROOT / mutant.path).read_text(encoding="utf-8").split("\n")
            lines[mutant.number] = mutant.after
            source.write_text("\n".join(lines), encoding="utf-8")
            if not self.compile(mutant, source, made):
                return "void"
            return judge(made)

    def judge_by_tests(self, mutant, made):
        # The unit's own tests first: they notice most.
        own = re.search(r"TEST(?:_F|_P)?\((\w*)", test_of(mutant))

        def fails(room, program):
            filters = [f"*{own[1]}.*"] if own and room == mutant.room else []
            return any(tests(program, self.seconds.get(room, SLOWEST), chosen) != 0 for chosen in [*filters, "*"])

        results = (self.noticed(f"test_{room}", made, functools.partial(fails, room)) for room in asked(mutant.path))
        return next((result for result in results if result != "lives"), "lives")

    def noticed(self, target, made, fails):
        # Beside the others, whose places tell them where the sample site is.
        program = self.path / "bin" / f"mutant-{made.parent.name}-{target}"
        try:
            if not self.program(target, made, program):
                return "void"
            return "killed" if fails(program) else "lives"
        finally:
            program.unlink(missing_ok=True)


def test_of(mutant):
    file = ROOT / "tests" / mutant.room / f"{Path(mutant.path).stem}Test.cpp"
    return file.read_text(encoding="utf-8") if file.exists() else ""


def tests(program, seconds, chosen="*"):
    """Exit code; None when the time is over. Those of the main window wait most of the time: in parts side by side, and
    a part that fails is run once more, for on a busy machine what has its time may fail."""
    parts = 6 if program.name.endswith("test_app") and chosen == "*" else 1
    end, running, failed = time.monotonic() + seconds, {}, set()

    def start(part):
        environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1",
                       "GTEST_TOTAL_SHARDS": str(parts), "GTEST_SHARD_INDEX": str(part)}
        running[part] = subprocess.Popen([program, f"--gtest_filter={chosen}"], stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL, start_new_session=True, env=environment,
                                         cwd=program.parent.parent)

    for part in range(parts):
        start(part)
    try:
        while running and time.monotonic() < end:
            for part, code in [(part, process.poll()) for part, process in running.items()]:
                if code is not None:
                    del running[part]
                if code and (parts == 1 or part in failed):
                    return code
                if code:
                    failed.add(part)
                    start(part)
            time.sleep(0.05)
        return None if running else 0
    finally:
        for process in running.values():
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()


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
    # The twins for Windows are in no build here.
    files = [name for name in files if name.split("/")[0] in ROOMS and not name.endswith("Windows.cpp")
             and (wanted is None or name in wanted)]
    mutants = [mutant for name in files for mutant in mutants_of(name, None if wanted is None else wanted[name])]
    # By what each is, not by its place in the row: after a change of the room a sample is still the same one.
    def turn(mutant):
        return hashlib.sha256(f"{arguments.seed} {mutant.name}".encode()).digest()

    mutants.sort(key=turn)
    rooms = sorted({mutant.room for mutant in mutants})
    taken = [mutant for room in rooms for mutant in [each for each in mutants if each.room == room][:arguments.sample]]
    taken.sort(key=turn)  # the time may be over before all rooms had their turn
    return taken


class Results:
    """What came out, by content: the file, the fault, the tests."""

    def __init__(self, mutants):
        rooms = {room for mutant in mutants for room in asked(mutant.path)}
        self.units = {path: sum_of([ROOT / path]) for path in {mutant.path for mutant in mutants}}
        self.suites = {room: sum_of([*(ROOT / "tests" / room).rglob("*.*"), *(ROOT / "tests" / "support").rglob("*.*")])
                       for room in rooms}
        self.pictures = sum_of([*SCREENSHOTS.rglob("*.*"), ROOT / "tests" / "app" / "EveryDialog.h"])
        self.known, self.lock = {}, threading.Lock()
        RESULTS.parent.mkdir(parents=True, exist_ok=True)
        if RESULTS.exists():
            for line in RESULTS.read_text(encoding="utf-8").splitlines():
                self.known.update(json.loads(line))

    def of(self, mutant, judge):
        return self.once(mutant, " ".join(self.suites[room] for room in asked(mutant.path)), judge)

    def by_pictures(self, mutant, judge):
        return self.once(mutant, self.pictures, judge)

    def once(self, mutant, suite, judge):
        key = f"{self.units[mutant.path]} {suite} {mutant.number} {mutant.after}"
        if key not in self.known and (result := judge(mutant)):
            with self.lock, RESULTS.open("a", encoding="utf-8") as kept:
                self.known[key] = result
                kept.write(json.dumps({key: result}) + "\n")
        return self.known.get(key)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("paths", nargs="*")
    parser.add_argument("--build", type=Path, default=ROOT / "build" / "release")
    parser.add_argument("--sample", type=int)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--changed", metavar="REVISION")
    parser.add_argument("--budget", type=float, default=float("inf"))
    parser.add_argument("--goal", type=int)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--list", action="store_true")
    arguments = parser.parse_args()
    reasons = accepted()
    mutants = [mutant for mutant in chosen(arguments) if mutant.name not in reasons]
    if arguments.list:
        for mutant in mutants:
            print(f"{mutant.path}:{mutant.number + 1}: {mutant.kind}: {mutant.name.split(': ', 1)[1]}")
        return 0
    build, results, end = Build(arguments.build.resolve()), Results(mutants), time.monotonic() + arguments.budget
    score = {room: [0, 0] for room in sorted({mutant.room for mutant in mutants})}
    for room in score:
        build.link(f"test_{room}")
        if arguments.budget == float("inf"):  # else the tests have just held
            build.check(room)
    if arguments.budget == float("inf") and not GOALS.keys().isdisjoint(score):
        build.check_pictures()

    def judge(mutant):
        result = results.of(mutant, lambda each: build.judge(each) if time.monotonic() < end else None)
        if result == "lives" and build.pictures and mutant.room in GOALS:
            result = "killed" if results.by_pictures(mutant, build.look) == "killed" else result
        return mutant, result

    left = 0
    with ThreadPool(arguments.jobs) as pool:
        for mutant, result in pool.imap_unordered(judge, mutants):
            left += result is None
            if result in ("killed", "lives"):
                score[mutant.room][0] += result == "killed"
                score[mutant.room][1] += 1
            if result == "lives":
                print(f"{mutant.path}:{mutant.number + 1}: lives: {mutant.name.split(': ', 1)[1]}", flush=True)
    goals = {room: GOALS.get(room, GOAL) for room in score}
    if arguments.goal:
        score, goals = {"all": [sum(column) for column in zip(*score.values())] or [0, 0]}, {"all": arguments.goal}
    missed = False
    for room, (killed, tried) in score.items():
        if not tried:
            print(f"{room}/: nothing tried")
            continue
        percent = 100 * killed / tried
        missed = missed or (percent < goals[room] and (tried >= FEWEST or not arguments.goal))
        print(f"{room}/: {killed} of {tried} noticed, {percent:.0f} % (goal {goals[room]} %)")
    if left:
        print(f"{left} not tried: the time was over")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
