#!/usr/bin/python3
"""Tries the command lines and the links of the documents: check_documents.py SOURCE_FOLDER PROGRAM_FOLDER

A line counts in whatever order it is typed, so each build folder is configured as the scripts do it and then asked
for every target that a document names. Programs are asked for their options, scripts are only parsed.
"""
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path

source, programs = Path(sys.argv[1]), Path(sys.argv[2])
HANDBOOKS = ["README.md", "CONTRIBUTING.md", "SECURITY.md", "site/README.md"]  # every block of theirs is commands
PAGES = sorted(str(page.relative_to(source)) for page in (source / "docs").rglob("*.md"))
OUTSIDE = {"sudo", "cp", "cd", "cpack", "git"}
COMMAND = re.compile(r"^(\./|cmake |ctest |tessaly|build/|tools/|tests/|fuzz/|packaging/|\.ci/|[A-Z]+=\S+ )")
faults = []


def commands_of(page):
    """The simple commands of the indented blocks, as lists of words, without variables and comments."""
    for line in (source / page).read_text().splitlines():
        text = line[4:]
        if not line.startswith("    ") or not text.strip() or not (page in HANDBOOKS or COMMAND.match(text)):
            continue
        for part in re.sub(r"\s+#.*", "", text).replace("(", " ").replace(")", " ").split("&&"):
            words = shlex.split(part)
            while words and re.match(r"^[A-Z]+=", words[0]):
                words.pop(0)
            if words:
                yield words


def presets():
    known = json.loads((source / "CMakePresets.json").read_text())
    return {kind: {preset["name"] for preset in known.get(kind, []) if not preset.get("hidden")}
            for kind in ("configurePresets", "buildPresets", "testPresets")}


def configured_targets():
    """The targets that there are after each way in which a script configures build/release."""
    scripts = [source / name for name in ("run.sh", "test.sh", "tools/packages.sh", "packaging/check.sh")]
    ways = {match for script in scripts for match in re.findall(r"cmake --preset release([^|&>;\n]*)", script.read_text())}
    for way in ways | {""}:
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["cmake", "--preset", "release", *shlex.split(way), "-B", folder], cwd=source, check=True,
                           stdout=subprocess.DEVNULL)
            told = subprocess.run(["ninja", "-C", folder, "-t", "targets", "all"], check=True, text=True,
                                  capture_output=True).stdout
        yield {line.split(":")[0] for line in told.splitlines()}


def check_cmake(words, names, targets):
    if words[1] == "--preset":
        return words[2] in names["configurePresets"]
    folder = Path(words[words.index("--build") + 1])
    wanted = words[words.index("--target") + 1:] if "--target" in words else []
    return folder.parent == Path("build") and folder.name in names["configurePresets"] and set(wanted) <= targets


def check_program(words, targets):
    name = Path(words[0]).name
    if not (programs / name).exists() or not name.startswith("tessaly"):
        return name in targets or words[0] == "build/fuzz/bin/fuzz_Name"
    told = subprocess.run([programs / name, "--help"], capture_output=True, text=True, timeout=60, check=True).stdout
    options = {re.sub("=.*", "", word) for word in words[1:] if word.startswith("--")}
    if name == "tessaly-cli" and not options <= set(re.findall(r"--[a-z-]+", told)):
        return False  # its commands are in the same text
    return name in targets and all(re.search(rf"{re.escape(option)}\b", told) for option in options)


def check_script(words):
    script = source / words[0]
    if not os.access(script, os.X_OK):
        return False
    shell = script.read_text().startswith("#!/usr/bin/env bash")
    return not shell or subprocess.run(["bash", "-n", script], capture_output=True).returncode == 0


def check(words, names, targets):
    head = words[0]
    if head == "cmake":
        return check_cmake(words, names, targets)
    if head == "ctest":
        return "--preset" not in words or words[words.index("--preset") + 1] in names["testPresets"]
    if head.startswith("build/") or head.startswith("tessaly"):
        return check_program(words, targets)
    return head in OUTSIDE or ("/" in head and check_script(words))


def anchors(page):
    """What a link may name behind #: the page's headings in small letters, hyphens for blanks."""
    headings = re.findall(r"^#+ (.*)", page.read_text(), re.M)
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in headings}


def broken_links(page):
    for link in re.findall(r"\]\(([^)\s]+)\)", (source / page).read_text()):
        path, _, anchor = link.partition("#")
        there = (source / page).parent / path if path else source / page
        if "://" not in link and not (there.exists() and (not anchor or anchor in anchors(there))):
            yield link


def strangers():
    """Pages that a file of the repository names by their place, and that are not there."""
    told = subprocess.run(["git", "grep", "-noP", r"(?<![\w/])docs/[\w/.-]+\.(md|json|dot|svg|png)", "--", ".", ":!CHANGELOG.md"],
                          cwd=source, capture_output=True, text=True).stdout
    for line in told.splitlines():
        file, number, path = line.split(":", 2)
        if not (source / path).exists():
            yield f"{file}:{number}: names {path}"


names = presets()
targets = set.intersection(*configured_targets())
tried = 0
faults += strangers()
for page in HANDBOOKS + PAGES:
    faults += [f"{page}: leads nowhere: {link}" for link in broken_links(page)]
    for words in commands_of(page):
        tried += 1
        if not check(words, names, targets):
            faults.append(f"{page}: does not work: {' '.join(words)}")
if tried < 20:
    faults.append(f"only {tried} commands were found in the documents")
for script in source.glob("*/**/*.py"):
    if "build" not in script.relative_to(source).parts and "python" in script.open().readline().replace("#!/usr/bin/python3", ""):
        faults.append(f"{script}: asks PATH for its Python")
print("\n".join(faults) or f"{tried} commands of the documents work")
sys.exit(bool(faults))
