"""The parts of the portrait pages, and the section that they are put into: 480 by 800 pixels."""

import draw
import fonts
from icons import icon
from palette import number
from parts import (ON_BACK, ON_KEY, ON_PANEL, bar, choice_key, dial, empty_bar, frame, glass,
                   icon_picture, key, panel)
from skin import NARROW, Section

WIDTH, HEIGHT = 480, 800
LEFT, RIGHT, FULL = 4, 242, 472   # of the two columns, and the width of both
HALF = 234
THIRDS = (4, 163, 322)
THIRD = 154
TOP, BOTTOM = 76, 722             # of what lies between the strip and the navigation
NAVIGATION_TOP = 730

COLUMNS = (LEFT, RIGHT)


class PortraitSection(Section):
    def _inside(self, what, x, y, width, height):
        if x < 0 or y < 0 or x + width > WIDTH or y + height > HEIGHT:
            self.skin.fault(f"{self.name}: {what} leaves the page")


def grid(count, top, height, gap=4):
    """The places of tiles in two columns."""
    return [(COLUMNS[i % 2], top + (height + gap) * (i // 2)) for i in range(count)]


def picture_key(page, function, x, y, width, height, symbol, tab, size=44, color="accent"):
    """A button with an icon alone."""
    skin = page.skin
    page.button(function, x, y, key(skin, width, height), tab,
                image=(icon_picture(skin, symbol, size, color), (width - size) // 2,
                       (height - size) // 2))


def icon_key(page, function, x, y, width, height, symbol, caption, tab, points=16, size=36,
             enabled=None):
    """A button with an icon and, to its right, its caption."""
    left = 14
    text_x = left + size + 12
    page.button(function, x, y, key(page.skin, width, height), tab,
                image=(icon_picture(page.skin, symbol, size, "accent"), left, (height - size) // 2),
                label=(caption, text_x, height // 2 + round(points * 0.48), width - text_x - 4, points,
                       "text", ON_KEY, 0), enabled=enabled)


def tall_key(page, function, x, y, width, height, symbol, caption, tab, points=15, size=42,
             enabled=None):
    """A button with an icon above its caption."""
    text = fonts.pixels(points)
    top = (height - size - text - 8) // 2
    page.button(function, x, y, key(page.skin, width, height), tab,
                image=(icon_picture(page.skin, symbol, size, "accent"), (width - size) // 2, top),
                label=(caption, 2, top + size + 6 + round(text * 0.8), width - 4, points, "text",
                       ON_KEY, 2), enabled=enabled)


def plain_key(page, function, x, y, width, height, caption, tab, points=16):
    """A button with its caption alone."""
    page.button(function, x, y, key(page.skin, width, height), tab,
                label=(caption, 3, height // 2 + round(points * 0.48), width - 6, points, "text",
                       ON_KEY, 2))


def figure(page, name, x, baseline, width, points, room, unit_points=15, **more):
    """The value of a sensor, while it is known, and its unit to the right of it."""
    page.label("live_" + name, x, baseline, width - room - 6, points, "text", ON_PANEL, 1, **more)
    page.label("sensorunit_" + name, x + width - room, baseline, room, unit_points, "muted", ON_PANEL)


def tile(page, name, x, y, width, height, tab, points=26, level=None):
    """A tile with caption, value and unit of a sensor, and a bar if need be; a touch shows the sensor
    large."""
    skin = page.skin
    page.image(panel(skin, width, height), x, y)
    baseline = y + height - (34 if level else 14 if height < 100 else 30)
    figure(page, name, x + 4, baseline, width - 8, points, 68 if width > 220 else 56)
    cover = {}
    if level:
        picture, source, low, high, zones, shown = level
        if source:
            # A raw value does not know that its sensor is off.
            empty = empty_bar(skin, picture, width - 24, 18, low, high, zones)
            cover = dict(image=(empty, 12, height - 26), state="sensoroff_" + name)
    page.button("openvalue_" + name, x, y, glass(skin, width, height), tab, **cover,
                label=("=sensorcaption_" + name, 12, 27, width - 16, 15, "muted", ON_PANEL, 0))
    if level:
        bar(page, source or "sensor_" + name, x + 12, y + height - 26, picture, width - 24, 18, low,
            high, zones, shown)


def trace(page, function, x, y, width, height):
    """A chart over a minute."""
    c = page.skin.colors
    background = page.skin.picture(f"chart{width}x{height}", width, height,
                                   draw.box(0, 0, width, height, c["face1"], radius=5))
    page.add("Chart", function, X=x, Y=y, Time=60, Mode=0, Color=number(c["accent"]),
             GridColor=number(c["grid"]), Background=background + ".png", Font=NARROW,
             FontSize=15, Known=1)


def shared_sections(skin):
    """What pages share: the background, the strip at the top and the keys at the bottom."""
    c = skin.colors
    back = (f'<defs><linearGradient id="back" x1="0" y1="0" x2="0" y2="1">'
            f'<stop offset="0" stop-color="{c["back0"]}"/>'
            f'<stop offset="1" stop-color="{c["back1"]}"/></linearGradient></defs>'
            f'<rect width="{WIDTH}" height="{HEIGHT}" fill="url(#back)"/>')
    PortraitSection(skin, "backdrop").image(skin.picture("back", WIDTH, HEIGHT, back), 0, 0)

    strip = PortraitSection(skin, "status")
    shapes = (draw.box(0, 0, FULL, 68, c["panel"], c["edge"], 8, 1.5)
              + f'<circle cx="24" cy="50" r="8" fill="{c["empty"]}" stroke="{c["muted"]}"'
              ' stroke-width="2"/>')
    strip.image(skin.picture("strip", FULL, 68, shapes), LEFT, 4)
    lamp = skin.picture("lamp-on", 26, 26,
                        f'<circle cx="13" cy="13" r="12" fill="{c["lamp"]}" fill-opacity="0.25"/>'
                        f'<circle cx="13" cy="13" r="9" fill="{c["lamp"]}"/>')
    strip.image(lamp, 15, 41, "obd_connected")
    strip.label("time", 324, 32, 144, 18, "text", ON_PANEL, 1)
    strip.label("word_obd_status", 46, 62, 422, 15, "muted", ON_PANEL)
    strip.button("openmenu_system", LEFT, 4, glass(skin, FULL, 68), 95)

    first, last = ("openmenu_mainmenu", "menu"), ("openbox_shortcuts", "shortcuts")
    for name, between in (
            ("navigation", [("openmenu_-", "previous"), ("openmenu_+", "next")]),
            # A page that is not in the menu list leads back to where it was opened from.
            ("navigationprevious", [("openmenu_previous", "back"), ("openmenu_dashboard", "dashboard")]),
            ("navigationback", [("openmenu_troublecodes", "back"), ("openmenu_dashboard", "dashboard")])):
        section = PortraitSection(skin, name)
        for i, (function, symbol) in enumerate([first, *between, last]):
            picture_key(section, function, 4 + 119 * i, NAVIGATION_TOP, 115, 66, symbol, 90 + i, 40, "text")
    # The pages to choose from lead back to the panel, whichever of them is open.
    icon_key(PortraitSection(skin, "navigationchoose"), "openmenu_panel", LEFT, NAVIGATION_TOP, FULL, 66,
             "back", "Back", 90, 18)


def page(skin, name, title, navigation="navigation", command=""):
    """A page with its title, a label function; the command runs whenever it opens."""
    keys = [("Command", command)] if command else []
    shared = ("backdrop", "status", navigation)
    section = PortraitSection(skin, name,
                              keys + [(f"CommonObjects{i}", s) for i, s in enumerate(shared)])
    section.label(title, 16, 32, 300, 18, "text", ON_PANEL)
    return section
