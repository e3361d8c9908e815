#!/usr/bin/python3
"""Sets the programs beside independent readers, which were written from the documents alone, on generated files and on
damaged ones of every format.

usage: formats.py PROGRAMS [--rounds N] [--seed N] [FORMAT ...]    a row for each format; 1 when anything differs
"""
import argparse
import io
import json
import os
import random
import re
import shutil
import sys
import time
import zipfile

import calls
import disk
import readers
from operations import SKIPPED
from operations import ALL, KEY, MACROS, ONE, OTHERS, OWN, RULE, SNAPSHOT, Bench, macro, site_tree

DAMAGED = 4  # of each generated file


def damaged(chance, content):
    """A file with one to three faults in it."""
    for _ in range(chance.choice((1, 1, 2, 3))):
        at = chance.randrange(len(content) + 1)
        length = chance.choice((1, 1, 2, 5, 30))
        piece = content[at:at + length]
        content = chance.choice((
            lambda: content[:at], lambda: content[:at] + content[at + length:],
            lambda: content[:at] + piece + content[at:],
            lambda: content[:at] + bytes(chance.randrange(256) for _ in piece) + content[at + length:],
            lambda: content[:at] + bytes([piece[0] ^ 1 << chance.randrange(8)]) + content[at + 1:] if piece else content,
            lambda: content[:at] + chance.choice(SPLINTERS) + content[at:]))()
    return content


SPLINTERS = [b"\n", b"\r\n", b" ", b"=", b"%41", b"%", b"0", b"&#228;", b"\xe4", b"\xc3\xa4", b"<!-- -->", b"<x/>", b"\"", b"-"]


def word(chance):
    return "".join(chance.choice(["a", "B", "7", " ", "_", ".", "\u00e4", "\u20ac"]) for _ in range(chance.randrange(12)))


class Format:
    """`make` gives files by their path, of which the first is damaged; `told` what the programs make of them, `read`
    what the reader does."""

    def __init__(self, bench, chance):
        self.bench, self.chance = bench, chance

    def lay_out(self, files):
        for path, content in files.items():
            host = self.bench.host(path)
            os.makedirs(os.path.dirname(host), exist_ok=True)
            with open(host, "wb") as file:
                file.write(content)

    def clean(self):
        pass

    def damage(self, content):
        return damaged(self.chance, content)

    def rows(self, files):
        """What is in it, where that is kept in a damaged file, too."""
        return None

    def json(self, *words):
        done = self.bench.run([*words, "--json"])
        return json.loads(done.stdout) if done.stdout else None


class SettingsFile(Format):
    def make(self):
        texts = [self.text() for _ in range(4)]
        fields = [int(self.chance.choice([0, 1, 7, -1])).to_bytes(4, "little", signed=True),
                  self.chance.choice([25, 30, 50]).to_bytes(4, "little")]
        fields += [len(text).to_bytes(4, "little") + text + b"\0" + bytes([self.chance.choice([0, 9])]) for text in texts]
        return {OWN + "Settings.dat": b"".join(fields)}

    def text(self):
        return word(self.chance).encode("cp1252")

    def read(self, files):
        return readers.settings(next(iter(files.values())))

    def told(self, files):
        return self.json("settings")


class KeyFile(Format):
    def make(self):
        lines = ["#UPK", "BeginHeader", "File=key03.upk", "Name=" + word(self.chance), "Version=1.0", "EndHeader"]
        for _ in range(self.chance.randrange(8)):
            count = self.chance.choice([0, 1, 2, 5, 26, 27, 28, 29, 40])
            record = [0x20 + min(count + 3, 31)] + [self.chance.randrange(256) for _ in range(count + 3)]
            lines.append("".join(f"{byte:02x} " for byte in record) if self.chance.random() < 0.9 else word(self.chance))
        ends = self.chance.choice(["\n", "\n", "\r\n"])
        return {KEY: ends.join(lines).encode(self.chance.choice(["cp1252", "utf-8"])) + b"\n"}

    def read(self, files):
        name, commands = readers.key_file(files[KEY])
        return {"name": name, "commands": commands}

    def told(self, files):
        found = self.json("show", KEY)
        return found and {"name": found["name"],
                          "commands": [command["parameters"][0]["stored"] for command in found["commands"]]}


class XmlFile(Format):
    PIECE = re.compile(rb"<[A-Za-z][^<>]*/>|\s\w+\s*=\s*(?:\"[^\"]*\"|'[^']*')")

    def damage(self, content):
        """Seldom so that it is no longer well formed, of which the documents tell little."""
        pieces = list(self.PIECE.finditer(content))
        if not pieces or self.chance.random() < 0.2:
            return damaged(self.chance, content)
        one, other = self.chance.choice(pieces), self.chance.choice(pieces)
        inside = one[0]
        if not inside.startswith(b"<") and self.chance.random() < 0.7:
            at = self.chance.randrange(inside.index(b"=") + 2, len(inside))
            inside = inside[:at] + self.chance.choice([b"&#xE4;", b"&bad;", b"\xe4", b"\xc3", b".", b"$", b"9", b"NCSCOMMAND"]) + inside[at:]
        elif inside.startswith(b"<") and other[0].startswith(b"<"):
            inside = self.chance.choice([b"", inside * 2, other[0]])
        else:
            inside = b""
        return content[:one.start()] + inside + content[one.end():]


class MacroFile(XmlFile):
    def make(self):
        chance = self.chance
        encoding = chance.choice(["utf-8", "cp1252"])
        declared = chance.choice(["", "", '<?xml version="1.0"?>', f'<?xml version="1.0" encoding="{encoding}"?>',
                                  '<?xml version="1.0" encoding="Shift_JIS"?>'])
        if "cp1252" in declared:
            declared = declared.replace("cp1252", chance.choice(["windows-1252", "ISO-8859-1", "cp1252", "Latin1"]))
        body = "".join(self.command() for _ in range(chance.randrange(5)))
        if chance.random() < 0.9:
            body = f"<data>{body}</data>" + chance.choice(["", "<data><cmd/></data>"])
        text = f"{declared}{self.gap()}<macro{self.attribute('name') if chance.random() < 0.9 else ''}>{body}</macro>"
        if chance.random() < 0.2:
            text += f"<macro{self.attribute('name')}/>"
        return {ONE: (b"\xef\xbb\xbf" if chance.random() < 0.1 else b"") + text.encode(encoding)}

    def gap(self):
        return self.chance.choice(["", "\n    ", "\r\n", "<!-- <cmd/> & -->", "<other a='1'><cmd/></other>"]
                                  if self.chance.random() < 0.5 else [" "])

    def attribute(self, name):
        value = word(self.chance) + self.chance.choice(["", "&amp;", "&#228;", "&#x20AC;", "&uuml;", "& ", "&#0;", "&lt;b&gt;",
                                                        "&quot;"])
        quote = self.chance.choice("\"'")
        return f"{self.chance.choice([' ', '  ', chr(10)])}{name}{self.chance.choice(['=', ' = '])}{quote}{value}{quote}"

    def command(self):
        names = ["fid", "workplace", "group", "other"]
        self.chance.shuffle(names)
        attributes = "".join(self.attribute(name) if name != "workplace" else f' workplace="{self.chance.randrange(9)}"'
                             for name in names[:self.chance.randrange(1, 5)])
        params = "".join(f"<param{self.attribute('name')}{self.attribute('value') if self.chance.random() < 0.8 else ''}/>"
                         for _ in range(self.chance.randrange(3)))
        return f"{self.gap()}<cmd{attributes}>{self.gap()}{params}</cmd>"

    def read(self, files):
        name, commands = readers.macro(files[ONE])
        if commands is None:
            return None
        return {"name": name, "commands": [
            [*(fid.split(".", 1) if "." in fid else [None, fid]), *parameters] for fid, parameters in commands]}

    def told(self, files):
        found = self.json("show", ONE)
        return found and {"name": found["name"], "commands": [
            [command["destination"], command["function"],
             *[[given["name"], given["stored"]] for given in command["parameters"]]] for command in found["commands"]]}


class HistoryRecord(Format):
    WORDS = ["save", "copy", "create", "rename", "delete", "convert", "edit", "put-back", "unsaved"]

    def make(self):
        name, place = word(self.chance), MACROS + "macro%03d.mac" % self.chance.randrange(1000)
        keys = [("change", self.chance.choice(self.WORDS)), ("disk", place), ("name", name)]
        self.chance.shuffle(keys)
        content = macro(name)
        stem = f"history\\2026-11-24\\175644-123-9f3a1c20-{len(content)}-42-macro007"
        lines = "".join(f"{key}={re.sub('[%]', '%25', value)}\n" for key, value in keys)
        return {stem + ".txt": lines.encode(), stem + ".mac": content}

    def clean(self):
        shutil.rmtree(self.bench.host("history"), ignore_errors=True)

    def read(self, files):
        content, kept = files.values()
        found = {"id": "2026-11-24/175644-123", "change": "", "when": 1795543004123, "place": "", "name": "",
                 "size": len(kept)}
        try:
            keys = readers.record(content)
        except readers.Refused:
            return found
        change = keys.get("change", b"").decode("latin-1")
        return {**found, "change": "" if not keys.get("disk") else change if change in self.WORDS else "save",
                "place": readers.utf8_or_windows_1252(keys.get("disk", b"")),
                "name": readers.utf8_or_windows_1252(keys.get("name", b""))}

    def told(self, files):
        rows = self.json("history")
        return rows[0] if isinstance(rows, list) else rows


class StepsFile(Format):
    """Of acts by chance in the window; what undo and redo lead to afterwards."""
    PATH, WORKING = "recovery\\paneB.steps", OWN + "tempB.mac"

    def make(self):
        self.bench.lay_out(disk.frozen(site_tree()))
        self.checks = {}
        for number in range(self.chance.randrange(1, 6)):
            act = self.chance.choice(["edit", "edit", "undo", "redo"]) if number else "edit"
            self.bench.run(["window", "start", f"edit={self.chance.randrange(100)}" if act == "edit" else act])
            self.learn()
        return dict(zip([self.PATH, self.WORKING], self.bench.bytes_of([self.PATH, self.WORKING])))

    def learn(self):
        """The checksums of contents, which are of a kind that nothing here can work out."""
        steps, working, first = self.bench.bytes_of([self.PATH, self.WORKING, ONE])
        head, *rows = [keys for keys, _ in readers.frames(steps)]
        self.checks[first] = head["check"]
        if rows[-1]["kind"] == b"step":
            self.checks[working] = rows[-1]["check"]

    def read(self, files):
        found = readers.steps(files[self.PATH], files[self.WORKING], ONE.encode(), self.checks.get)
        if found is None:
            return [self.value(files[self.WORKING]) + "*"], True
        contents, position = found
        return [self.value(content) + "*" * (at == position) for at, content in enumerate(contents)], False

    @staticmethod
    def value(content):
        return re.search(rb' value="([^"]*)"', content)[1].decode()

    def told(self, files):
        line = self.bench.run(["window", "look"]).stdout.decode().strip()
        lost = line.endswith(", steps lost")
        return line.removesuffix(", steps lost").replace(", foreign", "").split(" ")[1:], lost


class BatchJournal(Format):
    """Of a replacement or a restore that was killed; what the files hold after the next start."""

    def make(self):
        self.bench.lay_out(disk.frozen(site_tree()))
        words, self.targets = ["replace", RULE, MACROS], ALL
        if self.chance.random() < 0.5:
            self.bench.run(["snapshot", MACROS, SNAPSHOT])
            words, self.targets = ["restore", SNAPSHOT, OTHERS], [f"{OTHERS}macro00{number}.mac" for number in (1, 2, 3)]
        kill = f"rename:signal=KILL:when={self.chance.randrange(2, 11)}"
        calls.run_recorded(self.bench.words(words), self.bench.environment, inject=kill)
        name = [name for name in os.listdir(self.bench.host("batches")) if name.endswith(".batch")]
        if not name:
            return self.make()
        self.tree = disk.frozen(disk.read_tree(self.bench.root))
        return {"batches\\" + name[0]: self.bench.bytes_of(["batches\\" + name[0]])[0]}

    def clean(self):
        self.bench.lay_out(self.tree)

    def read(self, files):
        held = dict(zip(self.targets, self.bench.bytes_of(self.targets)))
        found = readers.ended_batch(next(iter(files.values())), held)
        if found is not None and not set(found) <= set(self.targets):
            raise readers.Untold("another place")
        return held if found is None else found

    def told(self, files):
        self.bench.run(["settings"])
        return dict(zip(self.targets, self.bench.bytes_of(self.targets)))


class SnapshotFile(Format):
    def make(self):
        rows, files = [], {}
        workplaces = sorted(self.chance.sample(range(1, 9), self.chance.randrange(1, 4)))
        for workplace in workplaces:
            for number in sorted(self.chance.sample(range(1000), self.chance.randrange(3))):
                name, content = word(self.chance), macro("x", self.chance.randrange(3))
                files[f"workplace{workplace}/macro{number:03}.mac"] = content
                rows.append({"workplace": workplace, "number": f"{number:03}", "name": name, "size": len(content),
                             "sha256": readers.hashlib.sha256(content).hexdigest()})
        found = {"format": "tessaly-snapshot", "version": 1, "time": "2026-11-25T13:40:00Z", "panel": "10.1.1.1",
                 "workplaces": workplaces, "macros": rows}
        self.bend(found, files)
        packed = io.BytesIO()
        with zipfile.ZipFile(packed, "w") as archive:
            for name, content in {"manifest.json": json.dumps(found).encode(), **files}.items():
                info = zipfile.ZipInfo(name, (2026, 11, 25, 13, 40, 0))
                info.external_attr = 0o100644 << 16
                archive.writestr(info, content)
        return {SNAPSHOT: packed.getvalue()}

    def bend(self, found, files):
        """Sometimes something is not as it should be."""
        row = self.chance.choice(found["macros"]) if found["macros"] else {}
        bends = [lambda: found.update(version=2), lambda: found.update(format="x"), lambda: found.pop("macros"),
                 lambda: row.update(size=1), lambda: row.update(number="7"), lambda: row.update(workplace=9),
                 lambda: row.pop("sha256", None), lambda: found["macros"].reverse(), lambda: found["macros"].append(row),
                 lambda: files.update({"../macro001.mac": b""}), lambda: files and files.popitem(),
                 lambda: row.update(name=5), lambda: found.update(other=[1]), lambda: row.update(other=None)]
        if self.chance.random() < 0.6:
            self.chance.choice(bends)()

    def read(self, files):
        return [f"{workplace} {number} - {name}" for workplace, number, name in readers.snapshot(files[SNAPSHOT])]

    def rows(self, files):
        try:
            return self.read(files)
        except readers.Refused:
            return None

    def told(self, files):
        done = self.bench.run(["snapshot", SNAPSHOT])
        return done.stdout.decode().splitlines() if done.returncode == 0 else None


class InterfaceFile(XmlFile):
    FILES = [OWN + "TarrowMFDIfc.xml", OWN + "CorvaneXLPanel.xml"]

    def make(self):
        return {path: self.document().encode() for path in self.FILES}

    def document(self):
        chance, parts = self.chance, []
        families = ["me", "key", "dir", "me_"]
        for _ in range(chance.randrange(1, 4)):
            name = chance.choice(families)
            if chance.random() < 0.5:
                parts.append(f'<fidsegment_indexed name="{name}" fidseg="{name.upper()}" displayname="{name} " '
                             f'min="{chance.choice(["0", "1", "-1", "1x"])}" max="{chance.choice(["2", "3", "0"])}" '
                             f'offset="{chance.choice(["0", "5", "-1"])}"/>')
            else:
                members = "".join(f'<v fidseg="{text}" displayname="{text.lower()}"/>'
                                  for text in chance.sample(["SET", "INC", "ME4", "KEY5"], chance.randrange(1, 4)))
                parts.append(f'<fidsegment_enum name="{name}">{members}</fidsegment_enum>')
        for _ in range(chance.randrange(5)):
            segments = [chance.choice(["$" + chance.choice(families), chance.choice(["CLIP", "INC", "KEY5", "ME4"])])
                        for _ in range(chance.randrange(1, 4))]
            parts.append(f'<fid name="{".".join(segments)}" sid="{self.text()}" group="{self.text()}" '
                         f'description="{self.text()}">{self.parameters()}</fid>')
        return '<?xml version="1.0" encoding="UTF-8"?><mfd>' + "\n".join(parts) + "</mfd>"

    def text(self):
        return "".join(self.chance.choice(["$me", "$key", "$dir", "$me_", ".", "x", " ", "$", "$me.CLIP"])
                       for _ in range(self.chance.randrange(6)))

    def parameters(self):
        kinds = ["input", "enum", "int", "float", "timecode", "other"]
        return "".join(f'<{kind}_parameter name="{kind}{number}" description="d" use="{self.chance.choice(["optional", "must"])}"/>'
                       for number, kind in enumerate(self.chance.sample(kinds, self.chance.randrange(3))))

    def read(self, files):
        names, records = readers.functions([(1, files[self.FILES[0]]), (0, files[self.FILES[1]])])
        self.chosen = self.chance.sample(sorted(records), min(2, len(records)))
        return names, [records[name] for name in self.chosen]

    def told(self, files):
        found = self.json("dictionary", "--list")
        shown = [self.json("dictionary", "--show", name) for name in self.chosen]
        return found["names"] if found else [], [dict(self.record(one["function"])) for one in shown if one]

    @staticmethod
    def record(found):
        for name in ("name", "source", "template", "incremental", "sid", "group", "description"):
            yield name, found[name]
        yield "parameters", sorted((given["kind"], given["name"], given["description"], given["optional"])
                                   for given in found["parameters"])


FORMATS = {"settings": SettingsFile, "key file": KeyFile, "macro": MacroFile, "history record": HistoryRecord,
           "steps": StepsFile, "batch journal": BatchJournal, "snapshot": SnapshotFile, "interface file": InterfaceFile}


class Comparison:
    def __init__(self, form, name):
        self.form, self.name = form, name
        self.files = self.same = self.refused = self.untold = 0
        self.differences = []

    def run(self, rounds):
        for _ in range(rounds):
            files = self.form.make()
            self.sound = self.form.rows(files)
            first, content = next(iter(files.items()))
            for number in range(DAMAGED + 1):
                self.compare({**files, first: self.form.damage(content) if number else content})

    def compare(self, files):
        self.files += 1
        self.form.clean()
        self.form.lay_out(files)
        try:
            wanted = self.form.read(files)
        except readers.Untold:
            self.untold += 1
            return
        except readers.Refused:
            wanted = None
        told = self.form.told(files)
        self.refused += wanted is None
        if told == wanted:
            self.same += 1
        elif not self.is_stricter(told):
            self.differences.append((files, told, wanted))

    def is_stricter(self, told):
        """Of an archive that is damaged, every macro may be found whole all the same; or more is looked at than a reader
        of archives does."""
        return self.name == "snapshot" and told in (None, self.sound)

    def print(self):
        print(f"{self.name:16}{self.files:8}{self.same:8}{self.refused:10}{self.untold:8}{len(self.differences):8}", flush=True)
        for files, told, wanted in self.differences[:3]:
            path, content = next(iter(files.items()))
            print(f"  DIFFERS: {path} {content!r}\n    told: {told}\n    read: {wanted}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs")
    parser.add_argument("formats", nargs="*")
    parser.add_argument("--rounds", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    given = parser.parse_intermixed_args()
    if not calls.may_trace():
        print("strace may not trace here")
        return SKIPPED
    bench = Bench(given.programs)
    print(f"{'format':16}{'files':>8}{'same':>8}{'refused':>10}{'untold':>8}{'differ':>8}")
    began, different = time.monotonic(), 0
    for name in given.formats or FORMATS:
        bench.lay_out(disk.frozen(site_tree()))
        comparison = Comparison(FORMATS[name](bench, random.Random(given.seed)), name)
        comparison.run(given.rounds)
        comparison.print()
        different += len(comparison.differences)
    bench.close()
    print(f"{time.monotonic() - began:.0f} s, {different} differences")
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())
