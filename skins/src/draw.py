"""Shapes that the pictures are made of, as SVG. Angles are the program's own: 0 points straight
down, growing clockwise."""

import math

import fonts


def point(x, y, radius, angle):
    a = math.radians(angle)
    return x - math.sin(a) * radius, y + math.cos(a) * radius


def box(x, y, width, height, fill, edge=None, radius=8, line=1.0, extra=""):
    """A rounded rectangle that stays inside its bounds, its edge included."""
    inset = line / 2 if edge else 0
    stroke = f' stroke="{edge}" stroke-width="{line}"' if edge else ""
    return (f'<rect x="{x + inset}" y="{y + inset}" width="{width - 2 * inset}"'
            f' height="{height - 2 * inset}" rx="{radius}" fill="{fill}"{stroke} {extra}/>')


def text(x, baseline, content, size, color, anchor="start", bold=True, condensed=False):
    weight = ' font-weight="bold"' if bold else ""
    stretch = ' font-stretch="condensed"' if condensed else ""
    content = content.replace("&", "&amp;")
    return (f'<text x="{x}" y="{baseline}" font-family="DejaVu Sans"{weight}{stretch}'
            f' font-size="{size}" fill="{color}" text-anchor="{anchor}">{content}</text>')


def arc(x, y, radius, start, end, color, width):
    x1, y1 = point(x, y, radius, start)
    x2, y2 = point(x, y, radius, end)
    large = 1 if abs(end - start) > 180 else 0
    return (f'<path d="M{x1:.2f} {y1:.2f} A{radius} {radius} 0 {large} 1 {x2:.2f} {y2:.2f}"'
            f' fill="none" stroke="{color}" stroke-width="{width}"/>')


def tick(x, y, outer, inner, angle, color, width):
    x1, y1 = point(x, y, outer, angle)
    x2, y2 = point(x, y, inner, angle)
    return (f'<path d="M{x1:.2f} {y1:.2f} L{x2:.2f} {y2:.2f}" stroke="{color}"'
            f' stroke-width="{width}" stroke-linecap="butt"/>')


def face(x, y, radius, c, rim=5):
    """The round plate of a dial with its rim."""
    return (f'<defs><linearGradient id="rim" x1="0" y1="0" x2="0" y2="1">'
            f'<stop offset="0" stop-color="{c["ring0"]}"/>'
            f'<stop offset="1" stop-color="{c["ring1"]}"/></linearGradient>'
            f'<radialGradient id="plate" cx="0.5" cy="0.42" r="0.62">'
            f'<stop offset="0" stop-color="{c["face0"]}"/>'
            f'<stop offset="1" stop-color="{c["face1"]}"/></radialGradient></defs>'
            f'<circle cx="{x}" cy="{y}" r="{radius - 0.5}" fill="url(#rim)"/>'
            f'<circle cx="{x}" cy="{y}" r="{radius - rim}" fill="url(#plate)"/>')


def hub(x, y, radius, c):
    return (f'<defs><linearGradient id="hub" x1="0" y1="0" x2="0" y2="1">'
            f'<stop offset="0" stop-color="{c["hub0"]}"/>'
            f'<stop offset="1" stop-color="{c["hub1"]}"/></linearGradient></defs>'
            f'<circle cx="{x}" cy="{y}" r="{radius}" fill="url(#hub)"/>')


def scale(x, y, dial, c):
    """Zones, ticks and numbers of a dial."""
    low, high = dial["range"]
    first, last = dial["sweep"]

    def at(value):
        return first + (last - first) * (value - low) / (high - low)

    outer = dial["outer"]
    thick = dial.get("thick", 6)
    parts = [arc(x, y, outer - thick / 2, at(z[0]), at(z[1]), c[z[2]], thick) for z in dial.get("zones", [])]
    value = low
    while value <= high:
        if (value - low) % dial["step"]:
            parts.append(tick(x, y, outer, outer - dial["minor"], at(value), c["minor"], 2))
        value += dial["between"]
    for value in range(low, high + 1, dial["step"]):
        parts.append(tick(x, y, outer, outer - dial["major"], at(value), c["tick"], 3))
    size = dial["digits"]
    for value in dial["numbers"]:
        shown = str(value // dial.get("unit", 1)).replace("-", "−")
        # As far out as the ticks leave room for, whatever the number's width.
        across, down = point(0, 0, 1, at(value))
        half = fonts.width(shown, "DejaVu Sans Bold", size) / 2
        reach = abs(across) * half + abs(down) * size * 0.3645
        nx, ny = point(x, y, outer - dial["major"] - 5 - reach, at(value))
        parts.append(text(f"{nx:.2f}", f"{ny + size * 0.3645:.2f}", shown, size, c["tick"],
                          "middle"))
    return "".join(parts)


def bar(width, height, low, high, zones, c, full):
    """The picture of a bar, full or empty.

    A zone at the high end lights up as the bar reaches it. One at the low end would be lit by
    every value above it, so it is only marked by a strip below the bar, like all zones."""
    strip = 4
    room = height - strip - 2
    parts = [f'<clipPath id="bar"><rect width="{width}" height="{room}" rx="3"/></clipPath>'
             f'<g clip-path="url(#bar)"><rect width="{width}" height="{room}"'
             f' fill="{c["normal" if full else "empty"]}"/>']
    marks = []
    for start, end, color in zones:
        x1 = width * (start - low) / (high - low)
        x2 = width * (end - low) / (high - low)
        zone = f'<rect x="{x1:.2f}" y="{{}}" width="{x2 - x1:.2f}" height="{{}}" fill="{c[color]}"/>'
        marks.append(zone.format(height - strip, strip))
        if full and start > low:
            parts.append(zone.format(0, room))
    return "".join(parts) + "</g>" + "".join(marks)
