"""The parts that pages are put together from: keys, tiles, dials, bars, the status line."""

import draw
import fonts
from icons import icon
from palette import number
from skin import Section

GRID = 4             # left and top of a page's first tile
COLUMNS = (4, 203, 402, 601)    # of tiles in four columns
ROWS = (4, 84, 164, 244, 324)
TILE = (195, 75)
THIRDS = (4, 270, 536)          # of tiles in three columns
THIRD = 260
BAR_TOP = 404
KEY_TOP = 410
KEY = (91, 66)
KEY_COLUMNS = [8 + 99 * i for i in range(8)]

ON_BACK = ("back0", "back1")
ON_KEY = ("key", "focus", "down")
ON_PANEL = ("panel",)


def key(skin, width, height, front=""):
    """The three pictures of a button, with the same marks on each; returns their common name."""
    c = skin.colors
    name = f"key{width}x{height}" + (f"-{front}" if front else "")
    marks = FRONTS[front](c, width, height) if front else ""
    up = draw.box(0, 0, width, height, c["key"], c["keyedge"], 8, 1.5)
    over = draw.box(0, 0, width, height, c["focus"], c["accent"], 8, 3)
    down = draw.box(0, 0, width, height, c["down"], c["accent"], 8, 3)
    for state, shape in (("up", up), ("over", over), ("down", down)):
        skin.picture(f"{name}-{state}", width, height, shape + marks)
    return name


def glass(skin, width, height):
    """A button that lets the tile beneath show through."""
    c = skin.colors
    name = f"glass{width}x{height}"
    clear = f'<rect width="{width}" height="{height}" fill="#000000" fill-opacity="0"/>'
    skin.picture(name + "-up", width, height, clear)
    skin.picture(name + "-over", width, height,
                 draw.box(0, 0, width, height, "none", c["accent"], 8, 3))
    skin.picture(name + "-down", width, height,
                 draw.box(0, 0, width, height, c["accent"], c["accent"], 8, 3,
                          'fill-opacity="0.18"'))
    return name


def _switch_off(c, width, height):
    x, y = width - 78, (height - 36) // 2
    return (draw.box(x, y, 66, 36, c["empty"], c["muted"], 18, 2)
            + f'<circle cx="{x + 18}" cy="{y + 18}" r="11" fill="{c["muted"]}"/>')


def _lamp_off(c, width, height):
    return (f'<circle cx="24" cy="{height / 2}" r="9" fill="{c["empty"]}" stroke="{c["muted"]}"'
            ' stroke-width="2"/>')


def _answer(name, caption):
    def front(c, width, height):
        left = (width - 32 - 12 - fonts.width(caption, "DejaVu Sans Bold", 22)) / 2
        return (icon(name, left, height / 2 - 16, 32, c["accent"], stroke=5)
                + draw.text(left + 44, height / 2 + 8, caption, 22, c["text"]))
    return front


FRONTS = {"switch": _switch_off, "lamp": _lamp_off, "yes": _answer("yes", "Yes"),
          "no": _answer("no", "No"), "ok": _answer("yes", "OK")}


def icon_picture(skin, name, size, color="text"):
    return skin.picture(f"icon-{name}{size}", size, size,
                        icon(name, 0, 0, size, skin.colors[color], skin.colors["key"]))


def panel(skin, width, height):
    c = skin.colors
    return skin.picture(f"panel{width}x{height}", width, height,
                        draw.box(0, 0, width, height, c["panel"], c["edge"], 8, 1.5))


def frame(skin, width, height):
    """What lies around a tile that is selected and has no button of its own."""
    return skin.picture(f"frame{width}x{height}", width, height,
                        draw.box(0, 0, width, height, "none", skin.colors["accent"], 8, 3))


def icon_key(page, function, x, y, width, height, symbol, caption, tab, points=16, size=40):
    """A button with an icon and, to its right, its caption."""
    skin = page.skin
    left = 18
    text_x = left + size + 14
    page.button(function, x, y, key(skin, width, height), tab,
                image=(icon_picture(skin, symbol, size, "accent"), left, (height - size) // 2),
                label=(caption, text_x, height // 2 + round(points * 0.48), width - text_x - 4,
                       points, "text", ON_KEY, 0))


def tall_key(page, function, x, y, width, height, symbol, caption, tab, points=14, size=40):
    """A button with an icon above its caption."""
    skin = page.skin
    top = (height - size - 28) // 2
    page.button(function, x, y, key(skin, width, height), tab,
                image=(icon_picture(skin, symbol, size, "accent"), (width - size) // 2, top),
                label=(caption, 3, top + size + 24, width - 6, points, "text", ON_KEY, 2))


def switch_tile(page, name, x, y, width, height, tab):
    """A tile with the caption of a sensor, which a touch switches off and on. When it is off, what
    the tile shows besides is covered: its picture lies above images, labels, needles and bars."""
    skin = page.skin
    c = skin.colors
    page.image(panel(skin, width, height), x, y)
    room = height - 35
    off = skin.picture(f"off{width}x{height}", width - 10, room,
                       draw.box(0, 0, width - 10, room, c["panel"])
                       + draw.text((width - 10) / 2, room / 2 + 8, "Off", 22, c["muted"], "middle",
                                   bold=False))
    page.button("sensortoggle_" + name, x, y, glass(skin, width, height), tab,
                image=(off, 5, 29), state="sensoroff_" + name,
                label=("=sensorcaption_" + name, 10, 24, width - 16, 13, "muted", ON_PANEL, 0))


def sensor_tile(page, name, x, y, tab, height=TILE[1]):
    """A tile with caption, figure and unit of a sensor."""
    switch_tile(page, name, x, y, TILE[0], height, tab)
    page.label("sensor_" + name, x + 3, y + 63, 137, 26, "text", ON_PANEL, 1)
    page.label("sensorunit_" + name, x + 143, y + 63, 46, 12, "muted", ON_PANEL)


def dial(page, name, x, y, radius, hub, scale, more=""):
    """A dial around a centre: dim as long as there is no connection, when its needle rests."""
    c = page.skin.colors
    dim = {**c, "tick": c["minor"], "minor": c["edge"], **{zone: c["edge"] for zone in
                                                           ("normal", "warn", "danger")}}
    rim = 5 if radius > 100 else 4
    for state, function, colors in (("-dim", "picture", dim), ("", "obd_connected", c)):
        shapes = (draw.face(radius, radius, radius, c, rim)
                  + draw.scale(radius, radius, scale, colors) + draw.hub(radius, radius, hub, c)
                  + more)
        page.image(page.skin.picture(name + state, 2 * radius, 2 * radius, shapes), x - radius,
                   y - radius, function)


def needle(page, function, x, y, low, high, first, last, start, end, wide=9, narrow=4):
    """A needle in two colours: a line with a brighter one on top."""
    c = page.skin.colors
    common = dict(X=x, Y=y, Style=0, Min=low, Max=high, AngleStart=first, AngleEnd=last,
                  RadiusStart=start, StretchY=100)
    page.add("Gauge", function, Width=wide, RadiusEnd=end - 2, **common,
             Color=number(c["needleedge"]))
    page.add("Gauge", function, Width=narrow, RadiusEnd=end, **common, Color=number(c["needle"]))


def bar(page, function, x, y, name, width, height, low, high, zones, shown=None):
    """A bar with colour zones. `shown` is the range of the function where it is not low..high."""
    skin = page.skin
    skin.picture(name + "-full", width, height,
                 draw.bar(width, height, low, high, zones, skin.colors, True))
    skin.picture(name + "-empty", width, height,
                 draw.bar(width, height, low, high, zones, skin.colors, False))
    first, last = shown or (low, high)
    page.add("Bargraph", function, X=x, Y=y, Min=first, Max=last, Direction=1,
             Background=name + "-empty.png", Progress=name + "-full.png")


def status(skin):
    """The bottom line that every page shares: time, status text, lamp."""
    c = skin.colors
    back = (f'<defs><linearGradient id="back" x1="0" y1="0" x2="0" y2="1">'
            f'<stop offset="0" stop-color="{c["back0"]}"/>'
            f'<stop offset="1" stop-color="{c["back1"]}"/></linearGradient></defs>'
            f'<rect width="800" height="{BAR_TOP}" fill="url(#back)"/>'
            f'<rect y="{BAR_TOP}" width="800" height="76" fill="{c["bar"]}"/>'
            f'<rect y="{BAR_TOP}" width="800" height="1.5" fill="{c["edge"]}"/>')
    skin.picture("back", 800, 480, back)
    section = Section(skin, "status")
    section.image("back", 0, 0)
    section.label("time", KEY_COLUMNS[2] + 4, KEY_TOP + 54, 126, 16, "text", ("bar",))
    lamp = skin.picture("lamp-on", 30, 30,
                        f'<circle cx="15" cy="15" r="14" fill="{c["lamp"]}" fill-opacity="0.25"/>'
                        f'<circle cx="15" cy="15" r="10" fill="{c["lamp"]}"/>')
    section.button("openmenu_system", 337, KEY_TOP, key(skin, 256, KEY[1], "lamp"), 95,
                   image=(lamp, 9, 18), state="obd_connected",
                   label=("=obd_status", 46, 39, 206, 13, "text", ON_KEY, 0))


def navigation(skin):
    """The keys at both ends of the bottom line."""
    section = Section(skin, "navigation")
    _navigation_key(section, "openmenu_mainmenu", 0, "menu", 90)
    _navigation_key(section, "openmenu_-", 1, "previous", 91)
    _navigation_key(section, "openmenu_+", 6, "next", 96)
    _navigation_key(section, "openbox_shortcuts", 7, "shortcuts", 97)
    # A page that is not in the menu list leads back to where it was opened from.
    section = Section(skin, "navigationback")
    _navigation_key(section, "openmenu_mainmenu", 0, "menu", 90)
    _navigation_key(section, "openmenu_troublecodes", 1, "back", 91)
    _navigation_key(section, "openmenu_dashboard", 6, "dashboard", 96)
    _navigation_key(section, "openbox_shortcuts", 7, "shortcuts", 97)


def _navigation_key(section, function, column, symbol, tab):
    size = 36
    skin = section.skin
    section.button(function, KEY_COLUMNS[column], KEY_TOP, key(skin, *KEY), tab,
                   image=(icon_picture(skin, symbol, size), (KEY[0] - size) // 2,
                          (KEY[1] - size) // 2))


def page(skin, name, title, shared=("status", "navigation"), command=""):
    """A page with its title; the command runs whenever it opens."""
    keys = [("Command", command)] if command else []
    section = Section(skin, name, keys + [(f"CommonObjects{i}", s) for i, s in enumerate(shared)])
    picture = skin.picture("title-" + name, 130, 24,
                           draw.text(0, 18, title, 15, skin.colors["muted"], condensed=True))
    section.image(picture, KEY_COLUMNS[2] + 4, KEY_TOP + 5)
    return section
