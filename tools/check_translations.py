#!/usr/bin/python3
"""The program's own texts in its languages: check_translations.py LUPDATE SOURCE_FOLDER [--update]

Fails when a text of the windows has no finished translation, when a translation's text is gone from the windows, or
when the two disagree about %1, %n, an access key or the dots of a command that asks further; and when texts stand under
a name that no code asks for, as lupdate finds one in a free function that names a class. --update brings the
texts of resources/i18n into line with the windows first; what is then left to translate is marked unfinished.
"""
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

KEY = r"&(?=\w)"
MARKS = [r"%L?\d", r"%n", KEY, r"\.\.\.$"]
PLURALS_ONLY = {"en"}  # the language of the sources

lupdate, source = Path(sys.argv[1]), Path(sys.argv[2])
update = "--update" in sys.argv


def renew(ts, keep_obsolete):
    """The texts that stand in the sources now, with the translations that the file has of them."""
    plurals = ["-pluralonly"] if ts.stem.split("_")[1] in PLURALS_ONLY else []
    subprocess.run([lupdate, "-silent", "-I", ".", "-locations", "none", *([] if keep_obsolete else ["-no-obsolete"]),
                    *plurals, *FOLDERS, "-ts", ts], cwd=source, check=True)


FOLDERS = ["app", "editors", "windows", "widgets", "resources"]
CODE = "\n".join(path.read_text() for folder in FOLDERS for path in sorted((source / folder).iterdir())
                 if path.suffix in (".h", ".cpp", ".ui"))


def is_asked_for(context):
    """A class without a metaobject, a name in the code, a form; a class with one has its namespace in front."""
    return "::" in context or re.search(rf'TR_FUNCTIONS\({context}\)|"{context}"|<class>{context}</class>', CODE)


def marks_of(text, but=None):
    return [sorted(set(re.findall(mark, text))) for mark in MARKS if mark != but]


def faults_of(message, menu):
    text, translation = message.findtext("source"), message.find("translation")
    if translation.get("type") in ("vanished", "obsolete"):
        return [f"no longer used: {text!r}"]
    if translation.get("type") == "unfinished":
        return [f"not translated: {text!r}"]
    forms = [form.text or "" for form in translation.findall("numerusform")] or [translation.text or ""]
    if not all(forms):
        return [f"empty: {text!r}"]
    # A menu whose English letters are all taken may find a free one in another language.
    but = KEY if menu and not re.search(KEY, text) else None
    return [f"other marks than {text!r}: {form!r}" for form in forms if marks_of(form, but) != marks_of(text, but)]


def check(ts):
    contexts = ElementTree.parse(ts).getroot().findall("context")
    strange = [name for context in contexts if not is_asked_for(name := context.findtext("name"))]
    return [f"{ts.name}: {name}: no code asks for texts of that name" for name in strange] + \
           [f"{ts.name}: {context.findtext('name')}: {fault}" for context in contexts
            for message in context.findall("message")
            for fault in faults_of(message, context.findtext("name").endswith("Menu"))]


files = sorted((source / "resources/i18n").glob("tessaly_*.ts"))
faults = [] if files else ["no translations found"]
with tempfile.TemporaryDirectory() as folder:
    for file in files:
        if update:
            renew(file, keep_obsolete=False)
        renewed = Path(shutil.copy(file, folder))
        renew(renewed, keep_obsolete=True)
        faults += check(renewed)
print("\n".join(faults) or "all texts are translated")
sys.exit(bool(faults))
