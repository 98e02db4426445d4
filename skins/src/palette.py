"""The two palettes of the one design, and the contrast that they must keep."""

# One accent colour; amber and red are kept for warnings.
NIGHT = {
    "back0": "#10151C", "back1": "#080A0E", "bar": "#0B0F14",
    "panel": "#151B23", "edge": "#2C3743",
    "key": "#1D2530", "keyedge": "#3D4957", "focus": "#22303D", "down": "#0E4257",
    "text": "#F5F8FB", "muted": "#A9B6C4",
    "accent": "#41C7F4", "warn": "#FFB224", "danger": "#FF5A4C",
    "face0": "#161C24", "face1": "#0A0D12", "ring0": "#56636F", "ring1": "#1B222A",
    "tick": "#E6EDF4", "minor": "#7C8A98", "hub0": "#4A5663", "hub1": "#1A2028",
    "needle": "#F5F8FB", "needleedge": "#1E9CCB",
    "empty": "#242D37", "normal": "#41C7F4", "grid": "#2C3743", "off": "#3D4957",
    "veil": "#000000", "lamp": "#41C7F4",
}

DAY = {
    "back0": "#E9EDF1", "back1": "#D9DFE5", "bar": "#CBD3DB",
    "panel": "#FBFCFD", "edge": "#B4BFCA",
    "key": "#F3F6F8", "keyedge": "#8D9BA9", "focus": "#E2F0FA", "down": "#B5D9F0",
    "text": "#0B1016", "muted": "#3C4854",
    "accent": "#005290", "warn": "#A65700", "danger": "#BC0F1E",
    "face0": "#FFFFFF", "face1": "#F1F4F7", "ring0": "#8B98A5", "ring1": "#C4CDD6",
    "tick": "#0B1016", "minor": "#6A7784", "hub0": "#8B98A5", "hub1": "#5A6773",
    "needle": "#005290", "needleedge": "#005290",
    "empty": "#D5DCE3", "normal": "#005290", "grid": "#CBD3DB", "off": "#B4BFCA",
    "veil": "#20262C", "lamp": "#005290",
}

PALETTES = {"night": NIGHT, "day": DAY}

FIGURES = 7.0   # contrast of numbers against what they stand on
TEXT = 4.5      # of all other text
SHAPES = 3.0    # of needles, ticks, zones and lamps

# What shows what, on what.
FIGURE_PAIRS = [("accent", "face1")]  # the scale of a chart has the colour of its trace
SHAPE_PAIRS = [
    ("tick", "face0"), ("tick", "face1"), ("minor", "face0"), ("minor", "face1"),
    ("needle", "face0"), ("needle", "face1"), ("danger", "face0"), ("danger", "face1"),
    ("warn", "face0"), ("warn", "face1"),
    ("normal", "empty"), ("warn", "empty"), ("danger", "empty"),
    ("accent", "panel"), ("accent", "back0"), ("accent", "back1"), ("accent", "key"),
    ("accent", "down"), ("warn", "panel"), ("danger", "panel"), ("lamp", "key"),
]


def _light(color):
    parts = [int(color[i:i + 2], 16) / 255 for i in (1, 3, 5)]
    parts = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in parts]
    return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2]


def contrast(one, other):
    lights = sorted((_light(one), _light(other)))
    return (lights[1] + 0.05) / (lights[0] + 0.05)


def number(color):
    """A colour as skins state it: low byte red, then green, then blue."""
    return "&H" + color[5:7] + color[3:5] + color[1:3]


def check_shapes(name):
    colors = PALETTES[name]
    for least, pairs in ((FIGURES, FIGURE_PAIRS), (SHAPES, SHAPE_PAIRS)):
        for one, other in pairs:
            found = contrast(colors[one], colors[other])
            if found < least:
                yield f"{name}: {one} on {other} has a contrast of {found:.2f}, not {least}"
