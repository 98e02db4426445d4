"""A skin being made: its sections and pictures, and what is wrong with them.

Every text states what it stands on, so that its contrast is known; every text is measured in its
widest form. What is found wrong stops the build."""

import functools
import struct

import fonts
import panel
import sensors
from palette import FIGURES, TEXT, contrast, number

WIDTH, HEIGHT = 800, 480
TOUCH = 64

# What 13 (texts) and 16 (figures) arc minutes of capital height at 70 cm from a screen of 7 inches
# take at least, in points.
LEAST_TEXT, LEAST_FIGURE = 14, 18
VALUE_BYTES = 63
LABELS, GAUGES, CHARTS = 41, 17, 7

PLAIN = "DejaVu Sans"
NARROW = "DejaVu Sans Condensed"

# What a figure shows that is not known.
UNKNOWN = "–"

STATUS_TEXTS = ["Not Connected.", "Comport not found.", "Connected.", "Connecting....",
                "Initializing.", "Receiving Data.", "Open Channel.", "Close Channel.",
                "Reading Trouble Codes..", "Resetting Trouble Codes.."]
OTHER_TEXTS = {
    "obd_status": STATUS_TEXTS,
    "obd_reason": ["W" * 30],
    "obd_finding": ["W" * 30],
    "obd_code": ["W" * 30],
    "time": ["14:58:58", "12:58:58 PM"],
    "date": ["28.08.2028"],
    "obd_troublecodescount": ["127"],
    "indexlabel": ["88888/88888"],
    "obd_interface": ["W" * 20],
    "obd_protocol": ["AUTO, ISO 15765-4 (CAN 11/500)", "AUTO, ISO 14230-4 (KWP FAST)"],
    "APP_Title": ["Dravik V88.88.88"],
    "currentfolder": ["M" * 20],
}


def single(value):
    return struct.unpack("f", struct.pack("f", value))[0]


@functools.cache
def _sensor(name):
    rows = [row for row in sensors.SENSORS if row.function == name]
    if not rows:
        raise ValueError("no sensor " + name)
    return rows[0]


def decimals(name):
    """Those of a figure, which serve all units."""
    return max(sensors.decimals(_sensor(name), imperial) for imperial in (False, True))


@functools.cache
def value_texts(name):
    """The longest that a sensor can show, metric or not."""
    _, _, size, factor, offset, unit, _ = _sensor(name)
    places = decimals(name)
    shown = set()
    scales = [(1, 0)]
    if unit in sensors.IMPERIAL:
        scales.append(sensors.IMPERIAL[unit][:2])
    for times, plus in scales:
        f = single(factor * times)
        o = single(offset * times + plus)
        top = 256 ** size
        for raw in range(0, top, max(1, top // 4096) | 1):
            shown.add(f"{single(f * raw + o):.{places}f}")
    longest = max(len(text) for text in shown)
    return sorted(text for text in shown if len(text) >= longest - 1)


def unit_texts(name):
    unit = _sensor(name).unit
    texts = {sensors.METRIC[unit][2] if unit in sensors.METRIC else unit}
    if unit in sensors.IMPERIAL:
        texts.add(sensors.IMPERIAL[unit][2])
    for table in sensors.UNIT_TEXTS.values():
        texts.add(table.get(unit, unit if unit not in sensors.METRIC else ""))
    return sorted(texts)


WORDS = {texts[0].lower(): texts for texts in panel.words()}


def translations(text):
    """A fixed text in every language. Full stops behind it are kept, as the program does."""
    if text.lower() in WORDS:
        return list(WORDS[text.lower()])
    name = text.rstrip(".")
    return [found + text[len(name):] for found in WORDS[name.lower()]]


# Sensors that the driver picks have a name of their own.
STAND_INS = ("picked", "panel1", "panel2", "panel3", "panel4")


def _sensors_behind(name):
    return [row.function for row in sensors.SENSORS] if name in STAND_INS else [name]


def shown_texts(function, caption=""):
    """What a label function can show at its longest."""
    if function == "text":
        return OTHER_TEXTS.get(caption, [caption])
    word, _, argument = function.partition("_")
    if word == "word":
        if "_" not in argument:
            return translations(argument)
        return [found for text in shown_texts(argument)
                for found in (translations(text) if argument == "obd_status" else [text])]
    if word in ("live", "lowest", "highest"):
        return [text for name in _sensors_behind(argument)
                for text in value_texts(name)] + [UNKNOWN, *translations("Off")]
    if word == "sensorcaption":
        return [text for name in _sensors_behind(argument)
                for text in sensors.captions(_sensor(name))]
    if word == "sensorunit":
        return [text for name in _sensors_behind(argument) for text in unit_texts(name)]
    return OTHER_TEXTS[function]


def is_figure(function):
    return (function.startswith(("live_", "lowest_", "highest_"))
            or function in ("time", "indexlabel") or function.endswith("count"))


class Section:
    def __init__(self, skin, name, keys=()):
        self.skin = skin
        self.name = name
        self.lines = [f"{key}={value}" for key, value in keys]
        self.counts = {}
        self.shared = [value for key, value in keys if key.startswith("CommonObjects")]
        self.buttons = []
        skin.sections.append(self)

    def add(self, kind, function, **keys):
        """One element; returns its number."""
        number_ = self.counts.get(kind, 0)
        self.counts[kind] = number_ + 1
        for key, value in {"Function": function, **keys}.items():
            if len(str(value).encode()) > VALUE_BYTES:
                self.skin.fault(f"{self.name}: {kind}{number_}{key} is too long: {value}")
            self.lines.append(f"{kind}{number_}{key}={value}")
        return number_

    def image(self, picture, x, y, function="picture"):
        width, height = self.skin.size(picture)
        self._inside("image " + picture, x, y, width, height)
        self.add("Image", function, X=x, Y=y, Width=width, Height=height, Picture=picture + ".png")

    def _inside(self, what, x, y, width, height):
        if x < 0 or y < 0 or x + width > WIDTH or y + height > HEIGHT:
            self.skin.fault(f"{self.name}: {what} leaves the page")

    def check_text(self, what, texts, width, points, face, color, on, figures, lines=1):
        size = fonts.pixels(points)
        least = LEAST_FIGURE if figures else LEAST_TEXT
        if points < least:
            self.skin.fault(f"{self.name}: {what} has {points} points, not {least}")
        widest = max(texts, key=lambda text: fonts.width(text, face, size), default="")
        needed = fonts.width(widest, face, size)
        # Words leave a part of each line free.
        if needed > width * (lines - 0.3 * (lines > 1)):
            self.skin.fault(f"{self.name}: {what} needs {needed:.0f} of {width}: {widest}")
        colors = self.skin.colors
        bar = FIGURES if figures else TEXT
        for back in on:
            found = contrast(colors[color], colors[back])
            if found < bar:
                self.skin.fault(f"{self.name}: {what}: {color} on {back} has {found:.2f}, not {bar}")

    def label(self, function, x, baseline, width, points, color, on, align=0, caption="",
              face=NARROW, lines=1):
        """A text by its (first) baseline. Figures have the decimals of their sensor."""
        size = fonts.pixels(points)
        y = baseline - int(size * fonts.ASCENT + 0.5)
        height = int(size * fonts.LINE) * lines + 2
        self._inside("label " + function, x, y, width, height)
        self.check_text("label " + function, shown_texts(function, caption), width, points,
                        face, color, on, is_figure(function), lines)
        keys = dict(X=x, Y=y, Width=width, Height=height, Font=face, FontSize=points,
                    Alignment=align, Color=number(self.skin.colors[color]))
        if function.startswith("live_"):
            function = "word_" + function   # "Off" in the driver's language
        if function == "text":
            keys["Caption"] = caption
        if lines > 1:
            keys["Lines"] = lines
        word, _, name = function.removeprefix("word_").partition("_")
        if word in ("live", "lowest", "highest"):
            keys["Decimals"] = "sensor" if name in STAND_INS else decimals(name)
        self.add("Label", function, **keys)

    def button(self, function, x, y, key, tab, image=None, state=None, label=None, enabled=None,
               over=None):
        """A button of the pictures `key`, `key`-over and `key`-down, which works while the function
        `enabled` is on. `image` is a picture and its place, `state` the function that switches it;
        `label` a caption with x, baseline, width, points, colour, what it stands on, and alignment:
        a word of the language, a label function after "=", or a fixed text after "'". It may lie
        on the button `over`, whose touch it then takes."""
        width, height = self.skin.size(key + "-up")
        if width < TOUCH or height < TOUCH:
            self.skin.fault(f"{self.name}: button {function} is {width} by {height}")
        self._inside("button " + function, x, y, width, height)
        for other, rect in self.buttons:
            if other != over and (x < rect[0] + rect[2] and rect[0] < x + width
                    and y < rect[1] + rect[3] and rect[1] < y + height):
                self.skin.fault(f"{self.name}: buttons {function} and {other} overlap")
        self.buttons.append((function, (x, y, width, height)))
        keys = dict(X=x, Y=y, Up=key + "-up.png", Over=key + "-over.png", Down=key + "-down.png")
        if tab is not None:
            keys["Tabindex"] = tab
        if image:
            picture, image_x, image_y = image
            self.skin.size(picture)
            keys.update(Image=picture + ".png", ImageX=image_x, ImageY=image_y)
        if state:
            keys["ImageFunction"] = state
        if enabled:
            keys["Enabled"] = enabled
        if label:
            text, label_x, baseline, room, points, color, on, align = label
            size = fonts.pixels(points)
            if text.startswith("'"):
                keys.update(LabelFunction="text", LabelCaption=text[1:])
                texts = [text[1:]]
            else:
                keys["LabelFunction"] = text[1:] if text.startswith("=") else "word_" + text
                texts = shown_texts(keys["LabelFunction"])
            self.check_text("button " + function, texts, room, points, NARROW, color, on, False)
            if label_x + room > width:
                self.skin.fault(f"{self.name}: caption of {function} leaves the button")
            keys.update(LabelX=label_x, LabelY=baseline - int(size * fonts.ASCENT + 0.5),
                        LabelWidth=room, LabelHeight=int(size * fonts.LINE) + 2,
                        LabelAlignment=align, LabelFontSize=points, LabelFont=NARROW,
                        LabelColor=number(self.skin.colors[color]))
        self.add("Button", function, **keys)


class Skin:
    def __init__(self, name, colors):
        self.name = name
        self.colors = colors
        self.sections = []
        self.pictures = {}
        self.list_pictures = set()
        self.faults = []

    def fault(self, text):
        self.faults.append(f"{self.name}: {text}")

    def picture(self, name, width, height, shapes):
        """Keeps a picture; the same name always means the same picture."""
        svg = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}"'
               f' viewBox="0 0 {width} {height}">{shapes}</svg>')
        if self.pictures.setdefault(name, (width, height, svg))[2] != svg:
            self.fault(f"two pictures are called {name}")
        return name

    def size(self, picture):
        return self.pictures[picture][:2]

    def check(self):
        by_name = {section.name: section for section in self.sections}
        for section in self.sections:
            parts = [section] + [by_name[name] for name in section.shared]
            for kind, limit in (("Label", LABELS), ("Gauge", GAUGES), ("Chart", CHARTS)):
                count = sum(part.counts.get(kind, 0) for part in parts)
                if count > limit:
                    self.fault(f"{section.name}: {count} elements of the kind {kind}")
            used = "\n".join(line for part in self.sections for line in part.lines)
        for name in self.pictures:
            if f"={name}.png" not in used and name not in self.list_pictures:
                self.fault(f"picture {name} is not used")

    def ini(self):
        blocks = [f"[{s.name}]\n" + "\n".join(s.lines) for s in self.sections]
        return "; Made by skins/src/build.py.\n" + "\n\n".join(blocks) + "\n"
