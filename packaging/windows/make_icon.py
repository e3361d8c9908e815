#!/usr/bin/python3
"""The program's icon for Windows: make_icon.py OUTPUT.ico PICTURE.png ...; each picture goes in as it is."""
import struct
import sys
from pathlib import Path

pictures = [Path(name).read_bytes() for name in sys.argv[2:]]
head, at = struct.pack("<HHH", 0, 1, len(pictures)), 6 + 16 * len(pictures)
for picture in pictures:
    width, height = struct.unpack(">II", picture[16:24])
    # A size of 256 is told as 0.
    head += struct.pack("<BBBBHHII", width % 256, height % 256, 0, 0, 1, 32, len(picture), at)
    at += len(picture)
Path(sys.argv[1]).write_bytes(head + b"".join(pictures))
