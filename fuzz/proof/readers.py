"""Readers of every file format, written from docs/*.md alone."""
import hashlib
import io
import json
import re
import struct
import zipfile


class Refused(Exception):
    """No file of the format, with the reason."""


class Untold(Exception):
    """The documents leave open what this is read as."""


# settings-format.md
def settings(content):
    content = content[:1 << 20]
    found = {"format": 1, "frameRate": 25, "pathA": "c:\\programme\\rv48\\appli\\",
             "pathB": "c:\\programme\\rv48\\appli\\", "addressA": "192.168.1.10", "addressB": "192.168.1.10"}
    for name in ("format", "frameRate"):
        if len(content) < 4:
            return found
        found[name], content = struct.unpack("<i", content[:4])[0], content[4:]
        if name == "frameRate" and found[name] != 30:
            found[name] = 25
    for name in ("pathA", "pathB", "addressA", "addressB"):
        if len(content) < 4:
            return found
        length = struct.unpack("<I", content[:4])[0] + 2
        text, content = content[4:4 + length], content[4 + length:]
        found[name] = windows_1252(text.split(b"\0")[0])
        if len(text) < length:
            return found
    return found


def windows_1252(content):
    try:
        return content.decode("cp1252")
    except UnicodeDecodeError as problem:
        raise Untold("a byte without a character") from problem


def utf8_or_windows_1252(content):
    try:
        return content.decode()
    except UnicodeDecodeError:
        return windows_1252(content)


# classic-commands.md
def classic_text(line):
    """The text form of what the text form is read as."""
    line = line[:line.rfind(b" ") + 1]
    room, found = len(line) // 2, []
    for token in line.split(b" ")[:-1]:
        if len(token) not in (1, 2) or len(found) + 1 >= max(room, 1):
            return ""
        found.append(sum((int(chr(digit), 16) if chr(digit) in "0123456789abcdefABCDEF" else 0) << shift
                         for digit, shift in zip(reversed(token), (0, 4))))
    return classic_form(bytes(found))


def classic_form(record):
    if not record:
        return ""
    action, length, rest = record[0] & 0xE0, record[0] & 0x1F, record[1:]
    if length == 31:
        if len(rest) < 2:
            return ""
        length, rest = rest[0] * 255 + rest[1], rest[2:]
    if length < 3 or length > len(rest):
        return ""
    rest = "".join(f"{byte:02x} " for byte in rest[:length])
    if length < 32:
        return f"{action + length:02x} {rest}"
    return f"{action:02x} {length & 0xFF:02x} {length >> 8:02x}{rest}"


# key-file-format.md
def key_file(content):
    """The name or None, and the text form of each command."""
    start = content[:254]
    at = start.find(b"Name=")
    name = utf8_or_windows_1252(start[at + 5:].split(b"\n")[0]) if at >= 0 else None
    lines = content.split(b"\n", 6)
    if len(lines) < 7:
        return name, []
    body = [line.lstrip(b"\r\n \t") for line in re.split(rb"[\r\n]", lines[6])]
    return name, [classic_text(line) for line in body if line][:5000] or [""]


# macro-format.md
NAMED = {b"amp": "&", b"lt": "<", b"gt": ">", b"quot": '"', b"apos": "'"}
TOKEN = re.compile(rb'<!--(?:(?!--)[^\0])*-->|<!\[CDATA\[.*?\]\]>|<\?.*?\?>|<!DOCTYPE[^<>\[]*>|</([A-Za-z_][\w.:-]*)\s*>|'
                   rb'<([A-Za-z_][\w.:-]*)((?:\s+[A-Za-z_][\w.:-]*\s*=\s*(?:"[^"<]*"|\'[^\'<]*\'))*)\s*(/?)>|[^<]+', re.S)
ATTRIBUTE = re.compile(rb'([A-Za-z_][\w.:-]*)\s*=\s*(?:"([^"]*)"|\'([^\']*)\')', re.S)
REFERENCE = re.compile(rb"&(?:(amp|lt|gt|quot|apos)|#(\d{1,7})|#x([0-9a-fA-F]{1,6}));")


def macro(content):
    """The name or None, and the commands, or None without a place for them: fid and parameters."""
    content = line_feeds(content)
    decode, roots = macro_texts(content), elements(content)
    macros = [root for root in roots if root[0] == b"macro"]
    name = next((decode(attributes[b"name"]) for _, attributes, _ in macros if b"name" in attributes), None)
    data = next((child for child in macros[0][2] if child[0] == b"data"), None) if macros else None
    if data is None:
        return name, None

    def params(children):
        return [[decode(given.get(b"name", b"")), decode(given[b"value"]) if b"value" in given else None]
                for tag, given, _ in children if tag == b"param"]
    return name, [(decode(attributes.get(b"fid", b"")), params(children))
                  for tag, attributes, children in data[2] if tag == b"cmd"]


def line_feeds(content):
    return content.replace(b"\r\n", b"\n").replace(b"\r", b"\n")


def macro_texts(content):
    """What makes a text of the bytes of a value."""
    declared = re.match(rb'(?:\xef\xbb\xbf)?<\?xml[^>]*?encoding\s*=\s*["\']([^"\']*)["\']', content)
    plain = re.match(rb"<\?xml\b", content)
    encoding = declared[1].decode("latin-1").upper() if declared else "UTF-8" if plain else ""
    if content.startswith(b"\xef\xbb\xbf"):
        encoding = "UTF-8"
    if encoding in ("WINDOWS-1252", "CP1252", "ISO-8859-1", "LATIN1"):
        plain_text = windows_1252
    else:
        plain_text = utf8_or_windows_1252

    def text(value):
        found, at = [], 0
        pieces = []
        for reference in REFERENCE.finditer(value):
            character = NAMED.get(reference[1]) or spelled(reference)
            if character is None:
                continue
            pieces.append((value[at:reference.start()], character))
            at = reference.end()
        pieces.append((value[at:], ""))
        for raw, character in pieces:
            found += [plain_text(raw), character]
        if plain_text is utf8_or_windows_1252 and not is_utf8(b"".join(raw for raw, _ in pieces)):
            return "".join(windows_1252(raw) + character for raw, character in pieces)
        return "".join(found)
    return text


def is_utf8(content):
    try:
        content.decode()
    except UnicodeDecodeError:
        return False
    return True


def spelled(reference):
    number = int(reference[2]) if reference[2] else int(reference[3], 16)
    allowed = number in (9, 10, 13) or 0x20 <= number < 0xD800 or 0xE000 <= number < 0xFFFE or 0x10000 <= number < 0x110000
    return chr(number) if allowed else None


def elements(content):
    """The elements at the top: name, attributes, children. Only what is well formed; what is forgiven is not told."""
    if b"\0" in content or re.search(rb"<!DOCTYPE[^>]*\[", content):
        raise Refused("it may not be")
    if re.search(rb"[\x01-\x08\x0b\x0c\x0e-\x1f]", content):
        raise Untold("control characters")
    start = at = 3 if content.startswith(b"\xef\xbb\xbf") else 0
    open_ = [(b"", {}, [])]
    while at < len(content):
        token = TOKEN.match(content, at)
        if not token:
            raise Untold("not well formed")
        end, begin, given, empty = token.groups()
        if end:
            if open_.pop()[0] != end or not open_:
                raise Untold("not well formed")
        elif begin:
            attributes = [(key, double or single) for key, double, single in ATTRIBUTE.findall(given)]
            if len(dict(attributes)) < len(attributes) or len(attributes) > 1000 or len(open_) > 250:
                raise Untold("an attribute twice")
            open_[-1][2].append((begin, dict(attributes), []))
            if not empty:
                open_.append(open_[-1][2][-1])
        elif len(open_) == 1 and not token[0].startswith(b"<") and token[0].strip(b" \t\r\n"):
            raise Untold("text beside the elements")
        elif token[0].startswith(b"<?xml") and at != start:
            raise Untold("a second declaration")
        at = token.end()
    if len(open_) > 1 or not open_[0][2]:
        raise Untold("not well formed")
    return open_[0][2]


# history-format.md
def record(content):
    """The keys of a record."""
    found = {}
    *lines, rest = content.split(b"\n")
    if rest:
        raise Refused("a line that does not end")
    for line in lines:
        key, sign, value = line.partition(b"=")
        if not sign or not key or re.search(rb"[\x00-\x1f\x7f]", line):
            raise Refused("a line that is none")
        found[key] = re.sub(rb"%([0-9A-Fa-f]{2})", lambda hex_: bytes([int(hex_[1], 16)]), value)
    return {key.decode("latin-1"): value for key, value in found.items()}


HISTORY_NAME = re.compile(r"(\d{6})-(\d{3})-([0-9a-f]{8})-(\d+)(?:-(\d+)(x?))?-([A-Za-z0-9_.]*)\.mac")


def fnv(content):
    total = 0xCBF29CE484222325
    for byte in content:
        total = (total ^ byte) * 0x100000001B3 & 0xFFFFFFFFFFFFFFFF
    return total


# history-format.md, "Steps", and batch-journal.md
def frames(content):
    """Keys and bytes of each whole record from the start on."""
    while True:
        frame = re.match(rb"(\d{1,20}) (\d{1,20})\n", content)
        if not frame:
            return
        length = int(frame[1])
        inside = content[frame.end():frame.end() + length]
        if len(inside) < length or content[frame.end() + length:frame.end() + length + 1] != b"\n":
            return
        if fnv(inside) != int(frame[2]) or b"\n\n" not in inside:
            return
        keys, held = inside.split(b"\n\n", 1)
        yield record(keys + b"\n"), held
        content = content[frame.end() + length + 1:]


def number(text):
    if not re.fullmatch(rb"\d{1,19}", text):
        raise Untold("a number that is none")
    return int(text)


def steps(content, working, place, check_of):
    """Every content from the oldest to the newest and the position among them; None when the steps cannot be used. The
    checksum of a content is asked of `check_of`."""
    rows = list(frames(content))
    if not rows or rows[0][0].get("kind") != b"steps" or rows[0][0].get("version") != b"2":
        return None
    if rows[0][0].get("disk", b"").lower() != place.lower():
        raise Untold("steps of another macro")
    for left_out in range(min(2, len(rows))):
        found = followed(rows[0][0]["check"], rows[1:len(rows) - left_out], working, check_of)
        if found:
            return found
    return None


def followed(first, rows, working, check_of):
    done, undone = [], []  # steps, the last one to be undone or redone behind
    for keys, held in rows:
        kind = keys.get("kind")
        if kind == b"step":
            removed = number(keys["removed"])
            done.append((number(keys["at"]), held[:removed], held[removed:], keys["check"]))
            undone = []
        elif kind in (b"undo", b"redo"):
            source, target = (done, undone) if kind == b"undo" else (undone, done)
            for _ in range(number(keys["count"])):
                target.append(source.pop())
    if check_of(working) != (done[-1][3] if done else first):
        return None
    before, now = [], working
    for at, removed, added, _ in reversed(done):
        now = now[:at] + removed + now[at + len(added):]
        before.insert(0, now)
    after, now = [], working
    for at, removed, added, _ in reversed(undone):
        now = now[:at] + added + now[at + len(removed):]
        after.append(now)
    return before + [working] + after, len(before)


# batch-journal.md
def ended_batch(content, files):
    """What each file holds once the batch is over: a function of what it holds now; None for a refused journal."""
    rows = list(frames(content))
    if not rows or rows[0][0].get("kind") != b"batch" or rows[0][0].get("version") != b"2":
        return None
    count, mode = number(rows[0][0]["items"]), rows[0][0]["mode"]
    if len(rows) < 1 + count or mode not in (b"each", b"all"):
        return None
    items = [item_of(*row) for row in rows[1:1 + count]]
    first = max([number(keys["item"]) for keys, _ in rows[1 + count:] if keys["kind"] == b"begun"], default=0)
    undoing = any(keys["kind"] == b"undoing" for keys, _ in rows[1 + count:])
    found = dict(files)
    for path, new, old, holds in items[first if mode == b"each" else 0:]:
        now = found.get(path)
        if undoing and now == new:
            found[path] = old
        elif not undoing and now != new and holds(now):
            found[path] = new
    return found


def item_of(keys, held):
    if keys.get("kind") != b"item" or "disk" not in keys:
        raise Untold("an item of another kind")
    new = held[:number(keys["new"])] if "new" in keys else None
    rest = held[number(keys["new"]) if "new" in keys else 0:]
    old = rest if "old" in keys else None
    expected, size = keys.get("holds"), keys.get("size")

    def holds(now):
        if expected == b"unknown":
            return True
        if expected == b"nothing":
            return now is None
        return now is not None and len(now) == number(size)
    return keys["disk"].decode("latin-1"), new, old, holds


# snapshot.md
def snapshot(content):
    """Workplace or None, number and name of each macro."""
    try:
        archive = zipfile.ZipFile(io.BytesIO(content))
        infos = archive.infolist()
        names = [info.filename for info in infos]
        if len(set(names)) < len(names) or any(info.compress_type or info.flag_bits & 1 or info.is_dir() for info in infos):
            raise Refused("a file twice, or packed")
        if "manifest.json" not in names:
            raise Refused("no list")
        found = json.loads(archive.read("manifest.json").decode())
        files = {name: archive.read(name) for name in names if name != "manifest.json"}
    except (zipfile.BadZipFile, ValueError, NotImplementedError, RuntimeError, OSError, struct.error) as problem:
        raise Refused("damaged") from problem
    return rows_of(found, files)


def rows_of(found, files):
    if not isinstance(found, dict) or found.get("format") != "tessaly-snapshot" or found.get("version") != 1:
        raise Refused("another version")
    if not isinstance(found.get("macros"), list):
        raise Refused("no rows")
    of_panel, rows, named = "panel" in found, [], set()
    for row in found["macros"]:
        if not isinstance(row, dict) or not isinstance(row.get("number"), str) or \
                not re.fullmatch(r"\d{3}", row["number"]) or not isinstance(row.get("name"), str):
            raise Refused("a row that is none")
        workplace = row.get("workplace") if of_panel else None
        if of_panel and (type(workplace) is not int or workplace not in found.get("workplaces", [])):
            raise Refused("a workplace that is none")
        name = f"workplace{workplace}/macro{row['number']}.mac" if of_panel else f"folder/macro{row['number']}.mac"
        if name not in files or len(files[name]) != row.get("size") or \
                hashlib.sha256(files[name]).hexdigest() != row.get("sha256"):
            raise Refused("a file that is missing or another")
        named.add(name)
        rows.append((workplace, row["number"], row["name"]))
    if named != set(files):
        raise Refused("a file too many")
    if rows != sorted(rows, key=lambda row: (row[0] or 0, row[1])) or len(named) < len(rows):
        raise Refused("not in order")
    return rows


# interface-description.md
def functions(contents):
    """The names of all functions in their order, and the record of each name."""
    families, order, records = {}, [], {}
    for source, content in contents:
        content = line_feeds(content)
        decode = macro_texts(content)
        try:
            mfd = next((root for root in elements(content) if root[0] == b"mfd"), (b"", {}, []))
        except Refused:  # the other one is read all the same
            continue
        for tag, attributes, children in mfd[2]:
            found = texts_of(attributes, decode)
            if tag == b"fidsegment_indexed":
                indexed(found, families)
            elif tag == b"fidsegment_enum" and next(iter(found), "") == "name":
                members = [texts_of(child[1], decode) for child in children]
                families.setdefault(("listed", found["name"]), [
                    (member.get("fidseg", ""), member.get("displayname", "")) for member in members])
            elif tag == b"fid":
                parameters = [(child[0], texts_of(child[1], decode)) for child in children]
                expand(found, parameters, families, order, records, source)
    return order, records


def texts_of(attributes, decode):
    return {key.decode("latin-1"): decode(value) for key, value in attributes.items()}


def indexed(found, families):
    low, high, offset = (leading_number(found.get(name, "0")) for name in ("min", "max", "offset"))
    if high - low > 1000:
        raise Untold("a large family")
    families.setdefault(("numbered", found.get("name", "")), [
        (f"{found.get('fidseg', '')}{index}", f"{found.get('displayname', '')}{offset + index}")
        for index in range(low, high + 1)])


def leading_number(text):
    digits = re.match(r"[+-]?\d{1,9}", text)
    return int(digits[0]) if digits else 0


KINDS = {b"input_parameter": "input", b"enum_parameter": "enum", b"int_parameter": "integer", b"float_parameter": "float",
         b"timecode_parameter": "timecode"}


def expand(found, parameters, families, order, records, source):
    references, rows = [], [([], [])]
    for part in found.get("name", "").split("."):
        members = [(part, None)]
        if part.startswith("$"):
            members = families.get(("numbered", part[1:]), families.get(("listed", part[1:])))
            references.append(part[1:])
        if members is None:
            return
        rows = [(names + [segment], used + [(segment, shown)] * (shown is not None))
                for names, used in rows for segment, shown in members]
    for names, used in rows:
        name = ".".join(names)
        if "ME4" in name and ("KEY5" in name or "KEY6" in name):
            continue
        order.append(name)
        incremental = "INC" in names or not found.get("sid")
        records.setdefault(name, {
            "name": name, "source": source, "template": found.get("name", ""), "incremental": incremental,
            "sid": "" if "INC" in names else substituted(found.get("sid", ""), references, used, 0),
            "group": "" if "INC" in names else substituted(found.get("group", ""), references, used, 0),
            "description": substituted(found.get("description", ""), references, used, 1),
            "parameters": sorted((KINDS[tag], given.get("name", ""), given.get("description", ""),
                                  given.get("use") == "optional") for tag, given in parameters if tag in KINDS)})


def substituted(text, references, used, which):
    """A text with the references of the name replaced."""
    times = dict.fromkeys(references, 0)

    def chosen(reference):
        name = reference[1]
        if name not in times:
            return reference[0]
        uses = [use for other, use in zip(references, used) if other == name]
        use = uses[min(times[name], len(uses) - 1)]
        times[name] += 1
        return use[which]
    return re.sub(r"\$([A-Za-z0-9_]+)", chosen, text)
