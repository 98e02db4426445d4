"""Text widths, read from the font files themselves, so that a caption that would be cut off stops
the build instead of a driver."""

import functools
import struct

FOLDER = "/usr/share/fonts/truetype/dejavu/"
FILES = {
    "DejaVu Sans": FOLDER + "DejaVuSans.ttf",
    "DejaVu Sans Condensed": FOLDER + "DejaVuSansCondensed.ttf",
    "DejaVu Sans Bold": FOLDER + "DejaVuSans-Bold.ttf",
}

# The part of a font's size above its baseline and its line height; all of the family agree.
ASCENT = 0.928
LINE = 1.164


def pixels(points):
    """The program's pixel size of a font stated in points, at scale 1."""
    return int(points * 96 / 72 + 0.5)


@functools.cache
def _advances(face):
    with open(FILES[face], "rb") as file:
        data = file.read()
    tables = {}
    for i in range(struct.unpack_from(">H", data, 4)[0]):
        tag, _, offset, _ = struct.unpack_from(">4sIII", data, 12 + 16 * i)
        tables[tag] = offset
    units = struct.unpack_from(">H", data, tables[b"head"] + 18)[0]
    count = struct.unpack_from(">H", data, tables[b"hhea"] + 34)[0]
    widths = struct.unpack_from(">" + "Hh" * count, data, tables[b"hmtx"])[::2]
    return _characters(data, tables[b"cmap"]), widths, units


def _characters(data, cmap):
    """Glyph of each character of the basic plane (the cmap's segment table)."""
    for i in range(struct.unpack_from(">H", data, cmap + 2)[0]):
        platform, encoding, offset = struct.unpack_from(">HHI", data, cmap + 4 + 8 * i)
        at = cmap + offset
        if (platform, encoding) == (3, 1) and struct.unpack_from(">H", data, at)[0] == 4:
            break
    else:
        raise ValueError("font without a segment table")
    twice = struct.unpack_from(">H", data, at + 6)[0]
    glyphs = {}
    for segment in range(0, twice, 2):
        last = struct.unpack_from(">H", data, at + 14 + segment)[0]
        first = struct.unpack_from(">H", data, at + 16 + twice + segment)[0]
        delta = struct.unpack_from(">H", data, at + 16 + 2 * twice + segment)[0]
        ranges = at + 16 + 3 * twice + segment
        distance = struct.unpack_from(">H", data, ranges)[0]
        for code in range(first, min(last, 0xFFFE) + 1):
            if distance:
                glyph = struct.unpack_from(">H", data, ranges + distance + 2 * (code - first))[0]
                glyphs[code] = (glyph + delta) & 0xFFFF if glyph else 0
            else:
                glyphs[code] = (code + delta) & 0xFFFF
    return glyphs


@functools.cache
def width(text, face, size):
    """Width of a text in pixels at a size in pixels. Hinting makes the screen's text a little
    wider or narrower; whole pixels per character are the wider of the two."""
    glyphs, widths, units = _advances(face)
    exact = [widths[min(glyphs.get(ord(c), 0), len(widths) - 1)] * size / units for c in text]
    return max(sum(exact), sum(int(w + 0.5) for w in exact))
