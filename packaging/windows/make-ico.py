#!/usr/bin/env python3
"""make-ico.py ICO PNG...: puts square pictures into one icon file, as Windows takes it."""

import struct
import sys


def main():
    pictures = []
    for name in sys.argv[2:]:
        with open(name, "rb") as file:
            pictures.append(file.read())
    entries, offset = b"", 6 + 16 * len(pictures)
    for picture in pictures:
        (size,) = struct.unpack(">I", picture[16:20])  # the width
        # One byte holds the size, and 256 is written as 0.
        entries += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(picture), offset)
        offset += len(picture)
    with open(sys.argv[1], "wb") as file:
        file.write(struct.pack("<HHH", 0, 1, len(pictures)) + entries + b"".join(pictures))


main()
