#!/usr/bin/python3
"""Runs each recipe of docs/cookbook.md on a copy of the sample site: check_cookbook.py SOURCE_FOLDER PROGRAM_FOLDER

The panels of the recipes are one simulated panel of this run, on free ports.
"""
import csv
import os
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree
import zipfile
from pathlib import Path

source, programs = Path(sys.argv[1]), Path(sys.argv[2])
page = (source / "docs/cookbook.md").read_text()
beginning = re.search(r"```sh\n(.*?)```", page, re.S).group(1)
recipes = dict(re.findall(r"^## (.+?)\n.*?```sh\n(.*?)```", page, re.M | re.S))


def tree(path):
    data = path.read_bytes()
    try:
        return xml.etree.ElementTree.fromstring(data)
    except xml.etree.ElementTree.ParseError:  # declares no encoding
        return xml.etree.ElementTree.fromstring(data.decode("windows-1252"))


def names(folder):
    return {path.name: tree(path).get("name") for path in folder.glob("*.mac")}


def rates(folder):
    return [parameter.get("value") for path in sorted(folder.glob("*.mac"))
            for command in tree(path).iter("cmd")
            if re.search(r"\.ME[0-9]\.TRANSI\.RATE\.SET$", command.get("fid"))
            for parameter in command.iter("param") if parameter.get("name") == "RATE"]


# What holds after each: of the run's output, the site before, the site after, and the home of the user.
HOLDS = {
    "Rename in bulk": lambda out, before, after, home:
        [name for name in names(before).values() if name.startswith("Headline")]
        and {file: f"Late {name}" if name.startswith("Headline") else name for file, name in names(before).items()}
        == names(after),
    "Back a panel up every night": lambda out, before, after, home:
        not out and any(name.startswith("workplace1/") for backup in (home / "panel-backups").glob("*.zip")
                        for name in zipfile.ZipFile(backup).namelist()),
    "All macros that use a source": lambda out, before, after, home:
        len(lines := out.splitlines()) > 5 and len(set(lines)) == len(lines)
        and all(Path(line).is_file() for line in lines),
    "Change a value in a hundred macros": lambda out, before, after, home:
        "25" in rates(before) and rates(after) == ["12" if rate == "25" else rate for rate in rates(before)],
    "Check before a show": lambda out, before, after, home: out.endswith("ready for the show\n"),
    "Rehearse a macro on a simulated panel": lambda out, before, after, home:
        "007 has run\nQMF1.ME0.TRANSI.TYPE: MIX\n" in out,
    "The list of an application as a table": lambda out, before, after, home:
        {(f"macro{number}.mac", name) for number, name, count in csv.reader(out.splitlines())} == set(names(after).items()),
}
assert HOLDS.keys() == recipes.keys(), HOLDS.keys() ^ recipes.keys()
with tempfile.TemporaryDirectory() as name:
    folder = Path(name)
    shutil.copytree(source / "site/c", folder / "panel-site/c")
    panel = subprocess.Popen([programs / "tessaly-panelsim", "--site", folder / "panel-site", "--root", folder / "panel",
                              "--control-port", "0", "--ftp-port", "0", "--pace", "0"],
                             stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    try:
        control, ftp = next(re.search(r":(\d+) ftp .*:(\d+) tree", line).groups()
                            for line in panel.stdout if line.startswith("ready"))
        (folder / "bin").mkdir()
        (folder / "bin/tessaly-cli").write_text(
            f'#!/bin/bash\n[ "$1" != panel ] || set -- "$1" 127.0.0.1 "${{@:3}}" --control-port {control} --ftp-port {ftp}\n'
            f'exec "{programs}/tessaly-cli" "$@"\n')
        (folder / "bin/tessaly-cli").chmod(0o755)
        for heading, recipe in recipes.items():
            root, home = folder / "site", folder / "home"
            shutil.copytree(source / "site/c", root / "c")
            home.mkdir()
            done = subprocess.run(["bash", "-euo", "pipefail", "-c", beginning + recipe], text=True, capture_output=True,
                                  timeout=120, env={**os.environ, "PATH": f"{folder}/bin:{os.environ['PATH']}",
                                                    "TESSALY_ROOT": str(root), "HOME": str(home)})
            assert done.returncode == 0 and not done.stderr, (heading, done.returncode, done.stderr)
            workplace = "c/programme/RV48/appli/Evening News/CP1/macroWP1"
            assert HOLDS[heading](done.stdout, source / "site" / workplace, root / workplace, home), (heading, done.stdout)
            shutil.rmtree(root)
            shutil.rmtree(home)
    finally:
        panel.stdin.write("quit\n")
        panel.stdin.close()
        panel.wait(timeout=60)
print(f"{len(recipes)} recipes work")
