#!/usr/bin/python3
"""The documents as pages for the window of the guide: make_guide.py DOCS OUT

Writes OUT/guide.qrc with a page for each DOCS/*.md and all its pictures. Understands what the documents use: headings
(each an anchor, as the repository's viewer names them), paragraphs, lists, tables, code, pictures, links, emphasis.
"""
import html
import re
import struct
import sys
from pathlib import Path

docs, out = Path(sys.argv[1]), Path(sys.argv[2])

STYLE = """body { margin: 8px; } h1 { font-size: x-large; } h2 { margin-top: 24px; } table { margin: 8px 0; }
th { text-align: left; } td, th { padding: 3px 10px 3px 0; } pre { margin: 8px 16px; }"""
WIDEST_PICTURE = 750  # pixels
ITEM = re.compile(r"( *)(?:[-*]|(\d+)\.) +(.*)")


def anchor_of(heading):
    plain = re.sub(r"[`*_]|\[|\]\([^)]*\)", "", heading).lower()
    return re.sub(r"[^\w\- ]", "", plain).replace(" ", "-")


def picture(match, beside):
    """As wide as it is, but no wider than a page, which may hold some beside each other."""
    text, name = match.groups()
    header = (docs / name).read_bytes()[:24]
    width = min(WIDEST_PICTURE // beside, struct.unpack(">I", header[16:20])[0])
    return f'<img src="{name}" alt="{text}" width="{width}">'


def link(match):
    text, target = match.groups()
    target = re.sub(r"^([\w-]+)\.md(?=#|$)", r"\1.html", target)
    return f'<a href="{target}">{text}</a>'


def inline(text, beside=1):
    """Code is set aside first: nothing in it means anything else."""
    codes = []

    def keep(match):
        codes.append(html.escape(match.group(1), quote=False))
        return f"\0{len(codes) - 1}\0"

    text = html.escape(re.sub(r"`([^`]+)`", keep, text), quote=False)
    text = re.sub(r"!\[([^\]]*)\]\(([^)]+)\)", lambda match: picture(match, beside), text)
    text = re.sub(r"\[((?:[^\[\]]|<[^>]*>)*)\]\(([^)]+)\)", link, text)
    text = re.sub(r"\*\*([^*]+)\*\*", r"<b>\1</b>", text)
    text = re.sub(r"(?<![\w*])\*([^*\s][^*]*)\*", r"<i>\1</i>", text)
    return re.sub(r"\0(\d+)\0", lambda match: f"<code>{codes[int(match.group(1))]}</code>", text)


def cells(line):
    texts = re.split(r"(?<!\\)\|", line.strip().strip("|"))
    return [inline(text.strip().replace("\\|", "|"), len(texts)) for text in texts]


def table(lines):
    rows = ["<tr>" + "".join(f"<th>{cell}</th>" for cell in cells(lines[0])) + "</tr>"]
    rows += ["<tr>" + "".join(f"<td>{cell}</td>" for cell in cells(line)) + "</tr>" for line in lines[2:]]
    return "<table>" + "".join(rows) + "</table>"


def listing(lines):
    """A list with the lists in its items."""
    first = ITEM.match(lines[0])
    indent, kind = len(first.group(1)), "ol" if first.group(2) else "ul"
    items = []
    for line in lines:
        match = ITEM.match(line)
        if match and len(match.group(1)) <= indent:
            items.append([match.group(3)])
        else:
            items[-1].append(line)
    parts = []
    for item in items:
        inner = next((at for at, line in enumerate(item) if at and ITEM.match(line)), len(item))
        text = inline(" ".join(line.strip() for line in item[:inner]))
        parts.append(f"<li>{text}{listing(item[inner:]) if inner < len(item) else ''}</li>")
    return f"<{kind}>{''.join(parts)}</{kind}>"


def blocks(lines):
    """Runs of lines that belong together, with what they are."""
    at = 0
    while at < len(lines):
        line, begin = lines[at], at
        if not line.strip():
            at += 1
            continue
        if line.startswith("```"):
            at = lines.index("```", at + 1) + 1
            yield "code", lines[begin + 1:at - 1]
        elif line.startswith("    "):
            while at < len(lines) and (lines[at].startswith("    ") or not lines[at].strip()):
                at += 1
            yield "code", [text[4:] for text in lines[begin:at]]
        elif line.startswith("#"):
            at += 1
            yield "heading", [line]
        else:
            kind = "table" if line.startswith("|") else "list" if ITEM.match(line) else "text"
            at += 1
            while at < len(lines) and lines[at].strip() and not lines[at].startswith(("#", "```")) and (
                    kind != "text" or not (ITEM.match(lines[at]) or lines[at].startswith("|"))):
                at += 1
            yield kind, lines[begin:at]


def page(text):
    parts = []
    for kind, lines in blocks(text.splitlines()):
        if kind == "code":
            parts.append("<pre>" + html.escape("\n".join(lines).rstrip(), quote=False) + "</pre>")
        elif kind == "heading":
            marks, heading = lines[0].split(" ", 1)
            level = len(marks)
            parts.append(f'<h{level}><a name="{anchor_of(heading)}"></a>{inline(heading)}</h{level}>')
        elif kind == "table":
            parts.append(table(lines))
        elif kind == "list":
            parts.append(listing(lines))
        else:
            parts.append(f"<p>{inline(' '.join(lines))}</p>")
    return f"<html><head><style>{STYLE}</style></head><body>\n" + "\n".join(parts) + "\n</body></html>\n"


out.mkdir(parents=True, exist_ok=True)
files = []
for document in sorted(docs.glob("*.md")):
    name = document.stem + ".html"
    (out / name).write_text(page(document.read_text(encoding="utf-8")), encoding="utf-8")
    files.append(f'<file alias="{name}">{name}</file>')
files += [f'<file alias="{picture.name}">{picture.resolve()}</file>' for picture in sorted(docs.glob("*.png"))]
(out / "guide.qrc").write_text('<RCC><qresource prefix="/guide">' + "".join(files) + "</qresource></RCC>\n")
