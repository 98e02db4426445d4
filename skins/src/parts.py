"""The parts that pages are put together from: keys, tiles, dials, bars, the status line."""

import draw
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
KEY = (84, 66)
KEY_COLUMNS = (4, 92, 624, 712)     # of the keys at both ends of the bottom line
TITLE = (184, 160)                  # left edge and width of title and time, between keys and status
STATUS = (348, 266)

# Sections of keys for pages that are not in the menu list: what leads back, and whether the third key
# is the dashboard's, or the page's own.
BACK_SECTIONS = [("navigationback", "openmenu_troublecodes", True),
                 ("navigationprevious", "openmenu_previous", True),
                 ("navigationdiagnosis", "openmenu_diagnosis", False),
                 ("navigationcodes", "openmenu_codes", True)]

ON_BACK = ("back0", "back1")
ON_KEY = ("key", "focus", "down")
ON_PANEL = ("panel",)


def key(skin, width, height, front=""):
    """The three pictures of a button, with the same marks on each; returns their common name."""
    c = skin.colors
    name = f"key{width}x{height}" + (f"-{front}" if front else "")
    marks = FRONTS[front](skin, width, height) if front else ""
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


SWITCH = (56, 34)


def switch_picture(skin, on):
    """A switch by itself, on or off."""
    c = skin.colors
    width, height = SWITCH
    fill, edge, knob, x = ((c["accent"], c["accent"], c["panel"], width - height / 2) if on
                           else (c["empty"], c["muted"], c["muted"], height / 2))
    return (draw.box(0, 0, width, height, fill, edge, height / 2, 2)
            + f'<circle cx="{x}" cy="{height / 2}" r="{height / 2 - 7}" fill="{knob}"/>')


def _switch_off(skin, width, height):
    return (f'<g transform="translate({width - SWITCH[0] - 10} {(height - SWITCH[1]) // 2})">'
            + switch_picture(skin, False) + "</g>")


def _lamp_off(skin, width, height):
    c = skin.colors
    return (f'<circle cx="21" cy="{height / 2}" r="9" fill="{c["empty"]}" stroke="{c["muted"]}"'
            ' stroke-width="2"/>')


def _answer(name):
    def front(skin, width, height):
        return icon(name, 26, height / 2 - 16, 32, skin.colors["accent"], stroke=5)
    return front


FRONTS = {"switch": _switch_off, "lamp": _lamp_off, "yes": _answer("yes"), "no": _answer("no"),
          "ok": _answer("yes")}


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


def icon_key(page, function, x, y, width, height, symbol, caption, tab, points=16, size=40,
             enabled=None):
    """A button with an icon and, to its right, its caption."""
    skin = page.skin
    left = 18
    text_x = left + size + 14
    page.button(function, x, y, key(skin, width, height), tab,
                image=(icon_picture(skin, symbol, size, "accent"), left, (height - size) // 2),
                label=(caption, text_x, height // 2 + round(points * 0.48), width - text_x - 4,
                       points, "text", ON_KEY, 0), enabled=enabled)


def tall_key(page, function, x, y, width, height, symbol, caption, tab, points=14, size=40,
             enabled=None):
    """A button with an icon above its caption."""
    skin = page.skin
    top = (height - size - 28) // 2
    page.button(function, x, y, key(skin, width, height), tab,
                image=(icon_picture(skin, symbol, size, "accent"), (width - size) // 2, top),
                label=(caption, 2, top + size + 24, width - 4, points, "text", ON_KEY, 2),
                enabled=enabled)


def other_look(skin):
    """Command, icon and caption of the key that shows the day's skin by night, and the other way."""
    return ("skin_day", "day", "Day") if skin.name == "night" else ("skin_night", "night", "Night")


def choice_key(page, function, x, y, width, height, caption, tab, states=(), points=17):
    """A key with a dot that is lit while one of the states is on: what is chosen. Its picture lies
    beneath, so that several states can light it."""
    skin = page.skin
    c = skin.colors
    radius = 13
    plate = (draw.box(0, 0, width, height, c["key"], c["keyedge"], 8, 1.5)
             + f'<circle cx="34" cy="{height / 2}" r="{radius}" fill="{c["empty"]}"'
             f' stroke="{c["muted"]}" stroke-width="2"/>')
    page.image(skin.picture(f"choice{width}x{height}", width, height, plate), x, y)
    lit = skin.picture("chosen", 2 * radius, 2 * radius,
                       f'<circle cx="{radius}" cy="{radius}" r="{radius}" fill="{c["accent"]}"/>'
                       f'<circle cx="{radius}" cy="{radius}" r="5" fill="{c["key"]}"/>')
    for state in states:
        page.image(lit, x + 34 - radius, y + height // 2 - radius, state)
    page.button(function, x, y, glass(skin, width, height), tab,
                label=(caption, 62, height // 2 + round(points * 0.48), width - 66, points, "text",
                       ON_KEY, 0))


def value_tile(page, name, x, y, width, height, tab, cover=None):
    """A tile with the caption of a sensor, which a touch shows large. `cover` is a picture and its
    place in the tile that hides what is there while the sensor is off."""
    page.image(panel(page.skin, width, height), x, y)
    page.button("openvalue_" + name, x, y, glass(page.skin, width, height), tab,
                image=cover, state="sensoroff_" + name if cover else None,
                label=("=sensorcaption_" + name, 10, 24, width - 16, 14, "muted", ON_PANEL, 0))


def figure(page, name, x, baseline, width, points, unit_width, on=ON_PANEL):
    """The value of a sensor, while it is known, and its unit to the right of it."""
    page.label("live_" + name, x, baseline, width, points, "text", on, 1)
    page.label("sensorunit_" + name, x + width + 5, baseline, unit_width, 14, "muted", on)


def sensor_tile(page, name, x, y, tab, height=TILE[1], cover=None):
    """A tile with caption, figure and unit of a sensor."""
    value_tile(page, name, x, y, TILE[0], height, tab, cover)
    figure(page, name, x + 2, y + 64, 127, 26, 60)


def dial(page, name, x, y, radius, hub, scale, more="", lit="obd_connected"):
    """A dial around a centre: dim until the image function `lit` is on, as its needle has nothing
    to show until then."""
    c = page.skin.colors
    dim = {**c, "tick": c["minor"], "minor": c["edge"], **{zone: c["edge"] for zone in
                                                           ("normal", "warn", "danger")}}
    rim = 5 if radius > 100 else 4
    for state, function, colors in (("-dim", "picture", dim), ("", lit, c)):
        shapes = (draw.face(radius, radius, radius, c, rim)
                  + draw.scale(radius, radius, scale, colors) + draw.hub(radius, radius, hub, c)
                  + more)
        page.image(page.skin.picture(name + state, 2 * radius, 2 * radius, shapes), x - radius,
                   y - radius, function)


def needle(page, function, x, y, low, high, first, last, start, end, wide=9, narrow=4):
    """A needle in two colours: a line with a brighter one on top. Without a value there is none."""
    c = page.skin.colors
    common = dict(X=x, Y=y, Style=0, Min=low, Max=high, AngleStart=first, AngleEnd=last,
                  RadiusStart=start, StretchY=100, Known=1)
    page.add("Gauge", function, Width=wide, RadiusEnd=end - 2, **common,
             Color=number(c["needleedge"]))
    page.add("Gauge", function, Width=narrow, RadiusEnd=end, **common, Color=number(c["needle"]))


def empty_bar(skin, name, width, height, low, high, zones):
    return skin.picture(name + "-empty", width, height,
                        draw.bar(width, height, low, high, zones, skin.colors, False))


def bar(page, function, x, y, name, width, height, low, high, zones, shown=None):
    """A bar with colour zones. `shown` is the range of the function where it is not low..high."""
    skin = page.skin
    skin.picture(name + "-full", width, height,
                 draw.bar(width, height, low, high, zones, skin.colors, True))
    empty_bar(skin, name, width, height, low, high, zones)
    first, last = shown or (low, high)
    page.add("Bargraph", function, X=x, Y=y, Min=first, Max=last, Direction=1,
             Background=name + "-empty.png", Progress=name + "-full.png", Known=1)


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
    section.label("time", TITLE[0], KEY_TOP + 56, TITLE[1], 18, "text", ("bar",))
    lamp = skin.picture("lamp-on", 30, 30,
                        f'<circle cx="15" cy="15" r="14" fill="{c["lamp"]}" fill-opacity="0.25"/>'
                        f'<circle cx="15" cy="15" r="10" fill="{c["lamp"]}"/>')
    section.button("openmenu_system", STATUS[0], KEY_TOP, key(skin, STATUS[1], KEY[1], "lamp"), 95,
                   image=(lamp, 6, 18), state="obd_connected",
                   label=("=word_obd_status", 40, 40, STATUS[1] - 43, 14, "text", ON_KEY, 0))


def navigation(skin):
    """The keys at both ends of the bottom line."""
    section = Section(skin, "navigation")
    navigation_key(section, "openmenu_mainmenu", 0, "menu")
    navigation_key(section, "openmenu_-", 1, "previous")
    navigation_key(section, "openmenu_+", 2, "next")
    navigation_key(section, "openbox_shortcuts", 3, "shortcuts")
    # A page that is not in the menu list leads back to where it was opened from.
    for name, back, third in BACK_SECTIONS:
        section = Section(skin, name)
        navigation_key(section, "openmenu_mainmenu", 0, "menu")
        navigation_key(section, back, 1, "back")
        if third:
            navigation_key(section, "openmenu_dashboard", 2, "dashboard")
        navigation_key(section, "openbox_shortcuts", 3, "shortcuts")


def navigation_key(section, function, column, symbol):
    size = 36
    skin = section.skin
    section.button(function, KEY_COLUMNS[column], KEY_TOP, key(skin, *KEY),
                   (90, 91, 96, 97)[column],
                   image=(icon_picture(skin, symbol, size), (KEY[0] - size) // 2,
                          (KEY[1] - size) // 2))


def page(skin, name, title, shared=("status", "navigation"), command=""):
    """A page with its title; the command runs whenever it opens."""
    keys = [("Command", command)] if command else []
    section = Section(skin, name, keys + [(f"CommonObjects{i}", s) for i, s in enumerate(shared)])
    section.label("word_" + title, TITLE[0], KEY_TOP + 24, TITLE[1], 14, "muted", ("bar",))
    return section
