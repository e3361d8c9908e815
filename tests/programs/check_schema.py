#!/usr/bin/python3
"""Holds what "check --json" and "replace --json" print against their schemas: check_schema.py SOURCE_FOLDER PROGRAM_FOLDER"""
import json
import re
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
