#!/usr/bin/python3
"""Holds what "--json" prints against the schemas: check_schema.py SOURCE_FOLDER PROGRAM_FOLDER"""
import contextlib
import json
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import jsonschema

source, programs = Path(sys.argv[1]), Path(sys.argv[2])
schema = json.loads((source / "docs/check.schema.json").read_text())
jsonschema.Draft7Validator.check_schema(schema)
rules = schema["definitions"]["rule"]["enum"]
told = re.findall(r'{k\w+,\s*"([a-z-]+)"', (source / "review/CheckRules.cpp").read_text())
assert told == rules, f"rules of the schema: {set(told) ^ set(rules)}"
page = re.findall(r"^\| `([a-z-]+)` \|", (source / "docs/check.md").read_text(), re.M)
assert page == rules, f"rules of the page: {set(page) ^ set(rules)}"


def check(*words):
    told = subprocess.run([programs / "tessaly-cli", "--root", source / "site", "check", "--json", *words],
                          text=True, capture_output=True)
    assert not told.stderr, told.stderr
    report = json.loads(told.stdout)
    jsonschema.validate(report, schema)
    assert told.returncode == (report["errors"] > 0), told.returncode
    return report


forms = json.loads((source / "docs/json.schema.json").read_text())
jsonschema.Draft7Validator.check_schema(forms)
covered = {"parameter", "command", "givenParameter", "givenCommand"}  # in others


@contextlib.contextmanager
def simulated_panel():
    """The words behind a command of the panel."""
    panel = subprocess.Popen([programs / "tessaly-panelsim", "--site", source / "site", "--root", root / "panel",
                              "--control-port", "0", "--ftp-port", "0"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    try:
        ports = next(re.search(r":(\d+) ftp .*:(\d+) tree", line) for line in panel.stdout if line.startswith("ready"))
        yield ["--control-port", ports[1], "--ftp-port", ports[2], "--json"]
    finally:
        panel.communicate("quit\n", timeout=60)


def hold(form, *words, given=None, code=0):
    """What a command prints, once it has the form of that name; and what it is given."""
    covered.add(form)
    if given is not None:
        jsonschema.validate(given, {"$ref": "#/definitions/given", **forms})
        covered.add("given")
    told = subprocess.run([programs / "tessaly-cli", "--root", root, *words], text=True, capture_output=True,
                          input=None if given is None else json.dumps(given))
    assert told.returncode == code, (words, told.returncode, told.stderr)
    if "--json" not in words or given is not None:
        return None
    jsonschema.validate(json.loads(told.stdout), {"$ref": f"#/definitions/{form}", **forms})
    return json.loads(told.stdout)


with tempfile.TemporaryDirectory() as name:
    root = Path(name)  # a site of its own, since what is overwritten goes to its history
    shutil.copytree(source / "site/c", root / "c")
    workplace = root / "c/programme/RV48/appli/Evening News/CP1/macroWP1"
    sample, copy = workplace / "macro900.mac", root / "copy.mac"
    for macro in [*sorted(workplace.glob("*.mac")), *sorted(workplace.parent.parent.glob("CP7/upk/*.upk"))]:
        hold("show", "show", macro, "--json")
    keys = root / "c/programme/RV48/appli/Evening News/CP7/upk/key00.upk"
    assert hold("show", "show", keys, "--json")["name"] in keys.read_text("windows-1252")
    told = hold("show", "show", sample, "--json")
    assert {parameter["kind"] for command in told["commands"] for parameter in command["parameters"]} == {
        "enum", "integer", "float", "input", "timecode", "classic"}
    # Read and written back it is the same, whole, by its stored values alone, by numbers, and as it is shown.
    hold("show", "create", copy, "--json", given=told)
    assert hold("show", "show", copy, "--json") == told
    hold("diff", "diff", sample, copy, "--json", code=1)
    for kept in ("stored", "number", "shown"):
        for command in (some := json.loads(json.dumps(told)))["commands"]:
            for parameter in command["parameters"]:
                only = kept if parameter["kind"] != "classic" and parameter[kept] is not None else "stored"
                for other in {"stored", "number", "shown"} - {only}:
                    del parameter[other]
        hold("show", "create", copy, "Again", "--json", given=some)
        again = hold("show", "show", copy, "--json")
        assert [c["line"] for c in again["commands"]] == [c["line"] for c in told["commands"]], kept
    hold("show", "insert", copy, "--json", "--at", "start", given=told["commands"])
    hold("show", "paste", copy, given=told)
    assert len(hold("show", "show", copy, "--json")["commands"]) == 3 * len(told["commands"])
    for words in (["value", "ME1.KEY1.CLIP.SET", "VALUE", "--stored", "0.5"], ["value", "ME1.KEY1.TYPE.SET", "TYPE", "--stored", "LUM"],
                  ["classic", "24 10 05 03 c8 "], ["timecode", "0x41020304"], ["settings"], ["find", "clip", workplace],
                  ["dictionary", "--list", "clip", "--show", "ME1.KEY1.RATE.SET"],
                  ["dictionary", "--show", "ME1.KEY1.CLIP.INC"], ["dictionary", "--show", "ME1.KEY1.FILL.SET"]):
        hold(words[0], *words, "--json")
    hold("classic", "classic", "none", "--json", code=1)
    assert hold("history", "history", "--json")
    appli = workplace.parent.parent
    for words in ([], [appli.name], [appli.name, "CP1"], [appli.name, "CP1", "1"], [appli.name, "CP7"]):
        assert list(hold("list", "list", appli.parent, *words, "--json"))[1:] == [
            ["applications", "panels", "workplaces", "macros"][len(words) if "CP7" not in words else 3]]
    hold("effect", "effect", sample, "--json")
    assert hold("compare", "compare", workplace, workplace.parent / "macroWP2", "--json", code=1)["rows"]
    with simulated_panel() as ports:
        assert hold("panelWorkplaces", "panel", "127.0.0.1", "list", *ports)
        assert hold("panelList", "panel", "127.0.0.1", "list", "1", *ports)
        hold("panelCompare", "panel", "127.0.0.1", "compare", "1", workplace.parent / "macroWP2", *ports, code=1)
assert covered == set(forms["definitions"]), covered ^ set(forms["definitions"])

with tempfile.TemporaryDirectory() as name:
    folder = Path(name)
    command = '<cmd fid="PANEL.ME1.KEY1.CLIP.SET" workplace="9"><param name="VALUE" value="2"/></cmd>'
    (folder / "macro001.mac").write_text(f'<macro name="A">\n<data>{command}</data></macro>')
    (folder / "other.mac").write_text("no macro")
    spoilt = check(folder)
    assert (spoilt["files"], spoilt["errors"], spoilt["warnings"]) == (2, 3, 1), spoilt
    replacing = json.loads((source / "docs/replace.schema.json").read_text())
    jsonschema.Draft7Validator.check_schema(replacing)
    resolver = jsonschema.RefResolver((source / "docs/replace.schema.json").as_uri(), replacing)
    for rule, counts in {"value:2->0.5": (1, 0), "segment:ME1->ME7": (0, 1), "value:3->4": (0, 0)}.items():
        (folder / "macro001.mac").write_text(f'<macro name="A">\n<data>{command}</data></macro>')
        told = subprocess.run([programs / "tessaly-cli", "--root", source / "site", "replace", rule,
                               folder / "macro001.mac", "--dry-run", "--json"], text=True, capture_output=True)
        report = json.loads(told.stdout)
        jsonschema.validate(report, replacing, resolver=resolver)
        assert (report["possible"], report["impossible"], report["written"]) == (*counts, False), report
sample = check("--severity", "warning", source / "site")
assert not sample["checked"] and sample["files"] > 150, sample
