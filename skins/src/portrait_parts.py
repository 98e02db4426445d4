"""The parts of the portrait pages, and the section that they are put into: 480 by 800 pixels."""

import draw
import fonts
import icons
import panel as words
import sensors
from icons import icon
from palette import number
from skin import NARROW, OTHER_TEXTS, STATUS_TEXTS, Section, decimals, unit_texts, value_texts

WIDTH, HEIGHT = 480, 800
LEFT, RIGHT, FULL = 4, 242, 472   # of the two columns, and the width of both
HALF = 234
THIRDS = (4, 163, 322)
THIRD = 154
TOP, BOTTOM = 76, 722             # of what lies between the strip and the navigation
NAVIGATION_TOP = 730
TOUCH = 64

# The rule of README.md: capitals of 14 pixels for captions, of 17.2 for figures.
LEAST_CAPTION, LEAST_FIGURE = 15, 18

ON_BACK = ("back0", "back1")
ON_KEY = ("key", "focus", "down")
ON_PANEL = ("panel",)

STAND_INS = ("picked", "panel1", "panel2", "panel3", "panel4")
WORDS = {row[0].lower(): row for row in words.words()}

for name, strokes in {
        "find": '<circle cx="21" cy="21" r="13"/><path d="M31 31 L42 42"/>',
        "disconnect": '<path d="M11 25 H37 V26 a13 10 0 0 1 -26 0 z"/><path d="M24 37 V44"/>'
                      '<path d="M16 8 V16 M32 8 V16 M8 20 L14 20 M34 20 L40 20"/>',
        "moon": '<path d="M38 29 A16 16 0 1 1 20 9 a13 13 0 0 0 18 20 z"/>',
        "sun": '<circle cx="24" cy="24" r="8.5"/><path d="M24 4 V9 M24 39 V44 M4 24 H9 M39 24 H44'
               ' M10 10 L13.5 13.5 M34.5 34.5 L38 38 M38 10 L34.5 13.5 M13.5 34.5 L10 38"/>',
        "language": '<circle cx="24" cy="24" r="18"/><path d="M6 24 H42 M24 6 c-13 11 -13 25 0 36'
                    ' M24 6 c13 11 13 25 0 36"/>',
        "panel": '<rect x="8" y="6" width="32" height="15" rx="2.5"/>'
                 '<rect x="8" y="27" width="32" height="15" rx="2.5"/>'
                 '<path d="M14 13.5 H26 M14 34.5 H26"/>',
        "demo": '<path d="M15 8 L39 24 L15 40 z"/>'}.items():
    icons.ICONS.setdefault(name, strokes)


def translations(text):
    """A text in every language; the status texts are looked up without their full stops."""
    stem = text.rstrip(".")
    row = WORDS.get(text.lower()) or WORDS.get(stem.lower())
    if row is None:
        raise ValueError("no word " + text)
    dots = "" if text.lower() in WORDS else text[len(stem):]
    return [translation + dots for translation in row]


def live_texts(name):
    if name not in STAND_INS:
        return value_texts(name) + translations("Off")
    return ["-888.8", "888888.8"] + translations("Off")


def shown_texts(function, caption=""):
    """What a label function can show at its longest."""
    if function == "text":
        return OTHER_TEXTS.get(caption, [caption])
    if function == "word_obd_status":
        return [text for status in STATUS_TEXTS for text in translations(status)]
    if function.startswith("word_live_"):
        return live_texts(function.removeprefix("word_live_"))
    word, _, argument = function.partition("_")
    if word == "word":
        return translations(argument)
    if word in ("lowest", "highest"):
        return live_texts(argument)
    if word in ("sensorcaption", "sensorunit") and argument in STAND_INS:
        return [text for row in sensors.SENSORS for text in shown_texts(f"{word}_{row[1]}")]
    if word == "sensorcaption":
        return list(sensors.CAPTIONS[next(r[0] for r in sensors.SENSORS if r[1] == argument)])
    if word == "sensorunit":
        return unit_texts(argument)
    if function in ("obd_reason", "obd_finding", "listentry_0"):
        return []  # of many forms; they wrap
    return OTHER_TEXTS[function]


def wrapped(text, width, face, size):
    """How many lines a text takes, broken at its blanks."""
    lines, line = 1, ""
    for word in text.split():
        longer = (line + " " + word).strip()
        if line and fonts.width(longer, face, size) > width:
            lines, line = lines + 1, word
        else:
            line = longer
    return lines


class PortraitSection(Section):
    def _inside(self, what, x, y, width, height):
        if x < 0 or y < 0 or x + width > WIDTH or y + height > HEIGHT:
            self.skin.fault(f"{self.name}: {what} leaves the page")

    def label(self, function, x, baseline, width, points, color, on, align=0, caption="",
              lines=0):
        """A text by the baseline of its first line; with `lines` it wraps into so many."""
        figure = function.startswith(("word_live_", "lowest_", "highest_")) or function.endswith("count")
        if points < (LEAST_FIGURE if figure else LEAST_CAPTION):
            self.skin.fault(f"{self.name}: label {function} has only {points} points")
        size = fonts.pixels(points)
        y = baseline - int(size * fonts.ASCENT + 0.5)
        height = int(size * fonts.LINE * max(1, lines)) + 2
        self._inside("label " + function, x, y, width, height)
        texts = shown_texts(function, caption)
        if lines:
            for text in texts:
                if wrapped(text, width, NARROW, size) > lines:
                    self.skin.fault(f"{self.name}: {function} needs more than {lines} lines: {text}")
            texts = []
        self.check_text("label " + function, texts, width, points, NARROW, color, on, figure)
        keys = dict(X=x, Y=y, Width=width, Height=height, Font=NARROW, FontSize=points,
                    Alignment=align, Color=number(self.skin.colors[color]))
        if function == "text":
            keys["Caption"] = caption
        if lines:
            keys["Lines"] = lines
        if figure and not function.endswith("count"):
            name = function.rpartition("_")[2]
            keys["Decimals"] = 1 if name in STAND_INS else decimals(name)
        self.add("Label", function, **keys)

    def button(self, function, x, y, key, tab, image=None, state=None, label=None, enabled=None):
        """A button of the pictures `key`, `key`-over and `key`-down. `image` is a picture and its
        place, `state` the function that switches it, `enabled` the one that lets it be pressed;
        `label` a label function, or a fixed text after "=", with x, baseline, width, points, colour,
        what it stands on, and alignment."""
        width, height = self.skin.size(key + "-up")
        if width < TOUCH or height < TOUCH:
            self.skin.fault(f"{self.name}: button {function} is {width} by {height}")
        self._inside("button " + function, x, y, width, height)
        for other, (left, top, wide, high) in self.buttons:
            if x < left + wide and left < x + width and y < top + high and top < y + height:
                self.skin.fault(f"{self.name}: buttons {function} and {other} overlap")
        self.buttons.append((function, (x, y, width, height)))
        keys = dict(X=x, Y=y, Up=key + "-up.png", Over=key + "-over.png", Down=key + "-down.png",
                    Tabindex=tab)
        if enabled:
            keys["Enabled"] = enabled
        if image:
            picture, image_x, image_y = image
            self.skin.size(picture)
            keys.update(Image=picture + ".png", ImageX=image_x, ImageY=image_y)
        if state:
            keys["ImageFunction"] = state
        if label:
            keys.update(self.caption(function, width, *label))
        self.add("Button", function, **keys)

    def caption(self, function, key_width, text, x, baseline, room, points, color, on, align):
        size = fonts.pixels(points)
        fixed = text.startswith("=")
        texts = [text[1:]] if fixed else shown_texts(text)
        self.check_text("button " + function, texts, room, points, NARROW, color, on, False)
        if points < LEAST_CAPTION:
            self.skin.fault(f"{self.name}: caption of {function} has only {points} points")
        if x + room > key_width:
            self.skin.fault(f"{self.name}: caption of {function} leaves the button")
        keys = {"LabelFunction": "text", "LabelCaption": text[1:]} if fixed else {"LabelFunction": text}
        keys.update(LabelX=x, LabelY=baseline - int(size * fonts.ASCENT + 0.5), LabelWidth=room,
                    LabelHeight=int(size * fonts.LINE) + 2, LabelAlignment=align,
                    LabelFontSize=points, LabelFont=NARROW,
                    LabelColor=number(self.skin.colors[color]))
        return keys


def key(skin, width, height, front="", marks=""):
    """The three pictures of a button, with the same marks on each; returns their common name."""
    c = skin.colors
    name = f"key{width}x{height}" + (f"-{front}" if front else "")
    for state, fill, edge, line in (("up", "key", "keyedge", 1.5), ("over", "focus", "accent", 3),
                                    ("down", "down", "accent", 3)):
        skin.picture(f"{name}-{state}", width, height,
                     draw.box(0, 0, width, height, c[fill], c[edge], 8, line) + marks)
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


def icon_picture(skin, name, size, color="accent"):
    return skin.picture(f"icon-{name}{size}" + ("" if color == "accent" else "-" + color), size, size,
                        icon(name, 0, 0, size, skin.colors[color], skin.colors["key"]))


def panel(skin, width, height):
    c = skin.colors
    return skin.picture(f"panel{width}x{height}", width, height,
                        draw.box(0, 0, width, height, c["panel"], c["edge"], 8, 1.5))


def frame(skin, width, height):
    """What lies around a tile that is selected and has no button of its own."""
    return skin.picture(f"frame{width}x{height}", width, height,
                        draw.box(0, 0, width, height, "none", skin.colors["accent"], 8, 3))


def icon_key(page, function, x, y, width, height, symbol, caption, tab, points=15, size=36,
             enabled=None):
    """A button with an icon and, to its right, its caption."""
    skin = page.skin
    left = 14
    text_x = left + size + 12
    page.button(function, x, y, key(skin, width, height), tab,
                image=(icon_picture(skin, symbol, size), left, (height - size) // 2),
                label=("word_" + caption, text_x, height // 2 + round(points * 0.48),
                       width - text_x - 4, points, "text", ON_KEY, 0), enabled=enabled)


def tall_key(page, function, x, y, width, height, symbol, caption, tab, points=15, size=44,
             enabled=None):
    """A button with an icon above its caption."""
    skin = page.skin
    text = fonts.pixels(points)
    top = (height - size - text - 8) // 2
    page.button(function, x, y, key(skin, width, height), tab,
                image=(icon_picture(skin, symbol, size), (width - size) // 2, top),
                label=("word_" + caption, 2, top + size + 6 + round(text * 0.8), width - 4, points,
                       "text", ON_KEY, 2), enabled=enabled)


def plain_key(page, function, x, y, width, height, caption, tab, points=16, image=None, state=None,
              enabled=None):
    """A button with its caption in the middle."""
    page.button(function, x, y, key(page.skin, width, height), tab, image=image, state=state,
                label=(caption, 3, height // 2 + round(points * 0.48), width - 6, points, "text",
                       ON_KEY, 2), enabled=enabled)


def choice_key(page, function, x, y, width, height, caption, tab, state=None, points=18):
    """One of several: the chosen one has a frame and a tick, shown by `state`, or always."""
    skin = page.skin
    c = skin.colors
    chosen = skin.picture(f"chosen{width}x{height}", width, height,
                          draw.box(0, 0, width, height, "none", c["accent"], 8, 5)
                          + icon("yes", width - 46, (height - 32) / 2, 32, c["accent"], stroke=5))
    shown = dict(image=(chosen, 0, 0), state=state) if state else {}
    if state == "always":
        shown = dict(image=(chosen, 0, 0))
    page.button(function, x, y, key(skin, width, height), tab, **shown,
                label=(caption, 16, height // 2 + round(points * 0.48), width - 66, points, "text",
                       ON_KEY, 0))


def tile(page, name, x, y, width, height, tab, points=26, bar=None):
    """A tile with caption, value and unit of a sensor; a touch shows the sensor large."""
    skin = page.skin
    page.image(panel(skin, width, height), x, y)
    baseline = y + height - (36 if bar else 14 if height < 100 else 30)
    room = 68 if width > 220 else 56
    page.label("word_live_" + name, x + 4, baseline, width - room - 14, points, "text", ON_PANEL, 1)
    page.label("sensorunit_" + name, x + width - room - 4, baseline, room, 15, "muted", ON_PANEL)
    page.button("openvalue_" + name, x, y, glass(skin, width, height), tab,
                label=("sensorcaption_" + name, 12, 27, width - 16, 15, "muted", ON_PANEL, 0))
    if bar:
        picture, source, low, high, zones, shown = bar
        level(page, source or "sensor_" + name, x + 12, y + height - 27, picture, width - 24, 18,
              low, high, zones, shown)


def dial(page, name, sensor, x, y, radius, hub, scale, more=""):
    """A dial around a centre: dim as long as the value of its sensor is not known."""
    c = page.skin.colors
    dim = {**c, "tick": c["minor"], "minor": c["edge"], **{zone: c["edge"] for zone in
                                                           ("normal", "warn", "danger")}}
    rim = 5 if radius > 100 else 4
    for state, function, colors in (("-dim", "picture", dim), ("", "known_" + sensor, c)):
        shapes = (draw.face(radius, radius, radius, c, rim)
                  + draw.scale(radius, radius, scale, colors) + draw.hub(radius, radius, hub, c)
                  + more)
        page.image(page.skin.picture(name + state, 2 * radius, 2 * radius, shapes), x - radius,
                   y - radius, function)


def needle(page, function, x, y, scale, start, end, wide=9, narrow=4):
    """A needle in two colours: a line with a brighter one on top."""
    c = page.skin.colors
    low, high = scale["range"]
    first, last = scale["sweep"]
    common = dict(X=x, Y=y, Style=0, Min=low, Max=high, AngleStart=first, AngleEnd=last,
                  RadiusStart=start, StretchY=100, Known=1)
    page.add("Gauge", function, Width=wide, RadiusEnd=end - 2, **common,
             Color=number(c["needleedge"]))
    page.add("Gauge", function, Width=narrow, RadiusEnd=end, **common, Color=number(c["needle"]))


def level(page, function, x, y, name, width, height, low, high, zones, shown=None):
    """A bar with colour zones. `shown` is the range of the function where it is not low..high."""
    skin = page.skin
    for state, full in (("-full", True), ("-empty", False)):
        skin.picture(name + state, width, height,
                     draw.bar(width, height, low, high, zones, skin.colors, full))
    first, last = shown or (low, high)
    page.add("Bargraph", function, X=x, Y=y, Min=first, Max=last, Direction=1,
             Background=name + "-empty.png", Progress=name + "-full.png", Known=1)


def trace(page, function, x, y, width, height, seconds=60):
    """A chart."""
    skin = page.skin
    c = skin.colors
    background = skin.picture(f"chart{width}x{height}", width, height,
                              draw.box(0, 0, width, height, c["face1"], radius=5))
    page.add("Chart", function, X=x, Y=y, Time=seconds, Mode=0, Color=number(c["accent"]),
             GridColor=number(c["grid"]), Background=background + ".png", Known=1)


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

    ahead = [("openmenu_mainmenu", "menu"), ("openmenu_-", "previous"), ("openmenu_+", "next"),
             ("openbox_shortcuts", "shortcuts")]
    back_keys = [("openmenu_mainmenu", "menu"), ("openmenu_previous", "back"),
                 ("openmenu_dashboard", "dashboard"), ("openbox_shortcuts", "shortcuts")]
    # A page that is not in the menu list leads back to where it was opened from.
    for name, keys in (("navigation", ahead), ("navigationback", back_keys)):
        section = PortraitSection(skin, name)
        for i, (function, symbol) in enumerate(keys):
            section.button(function, 4 + 119 * i, NAVIGATION_TOP, key(skin, 115, 66), 90 + i,
                           image=(icon_picture(skin, symbol, 40, "text"), 37, 13))


def page(skin, name, title, navigation="navigation", command=""):
    """A page with its title, a word or a label function; the command runs whenever it opens."""
    keys = [("Command", command)] if command else []
    shared = ("backdrop", "status", navigation)
    section = PortraitSection(skin, name,
                              keys + [(f"CommonObjects{i}", s) for i, s in enumerate(shared)])
    section.label(title if "_" in title else "word_" + title, 16, 32, 300, 18, "text", ON_PANEL)
    return section
