"""The pages of the diagnosis, for screens of both shapes: the overview, where it is started, and a
page for each of its sections, with a list. What lies where is stated by a Form."""

import collections

import draw
import parts
import portrait_parts
from icons import icon
from palette import number
from parts import ON_PANEL
from skin import NARROW, TOUCH

# Rectangles of the overview by name; of a page with a list those of the list, of the text of its
# selected entry, taller where that tells more, and of four keys. `add_page` begins a page,
# `step` adds a key at the bottom; `points` are those of captions.
Form = collections.namedtuple("Form", "overview lists texts tall_texts keys add_page step points")

# What the list says while it has no entries, and the two keys of the page.
Section_ = collections.namedtuple("Section_", "name title symbol empty keys")

RUN_KEYS = [("obd_diagnose", "diagnosis", "Diagnose", "obd_connected"),
            ("obd_diagnosecancel", "no", "Cancel", "diagnosis_running")]
NOT_YET = "word_Not diagnosed yet"
SECTIONS = [
    Section_("codes", "Codes", "codes", NOT_YET,
             [("openmenu_codeframe", "freeze", "Freeze frame", "diagnosis_done"),
              ("obd_cleartroublecodes", "clear", "Clear", "obd_connected")]),
    Section_("readiness", "Readiness", "readiness", NOT_YET, RUN_KEYS),
    Section_("vehicle", "Vehicle", "vehicle", NOT_YET, RUN_KEYS),
    Section_("tests", "Tests", "tests", NOT_YET, RUN_KEYS),
    Section_("reports", "Reports", "reports", "word_No reports yet",
             [("report", "reports", "New report", None), ("report_open", "view", "Open", None)]),
]

# How an entry stands: a shape and a colour of its own for each, for those who see no colours.
MARKS = {"good": "accent", "bad": "danger", "open": "warn", "none": "muted"}


def wide_page(skin, name, title, navigation):
    return parts.page(skin, name, title, ("status", navigation))


def upright_page(skin, name, title, navigation):
    return portrait_parts.page(skin, name, "word_" + title, navigation)


WIDE = Form(
    overview={"start": (4, 4, 262, 106), "progress": (270, 4, 262, 106), "cancel": (536, 4, 260, 106),
              "codes": (4, 114, 528, 165), "readiness": (536, 114, 260, 165),
              "vehicle": (4, 283, 528, 117), "tests": (536, 283, 128, 117),
              "reports": (668, 283, 128, 117)},
    lists=(4, 4, 586, 316), texts=(4, 324, 586, 76), tall_texts=(4, 254, 586, 146),
    keys=[(594, 4 + 100 * i, 202, 96) for i in range(4)],
    add_page=wide_page, step=parts.navigation_key, points=14)

UPRIGHT = Form(
    overview={"start": (4, 76, 472, 104), "progress": (4, 184, 314, 82), "cancel": (322, 184, 154, 82),
              "codes": (4, 270, 472, 166), "readiness": (4, 440, 472, 84),
              "vehicle": (4, 528, 472, 108), "tests": (4, 640, 234, 82), "reports": (242, 640, 234, 82)},
    lists=(4, 76, 472, 394), texts=(4, 474, 472, 92), tall_texts=(4, 406, 472, 160),
    keys=[(4 + 238 * (i % 2), 570 + 78 * (i // 2), 234, 74) for i in range(4)],
    add_page=upright_page, step=portrait_parts.navigation_key, points=15)


def marks(skin):
    """What stands before the entries of the lists."""
    for name, color in MARKS.items():
        skin.picture(name, 40, 40, icon("mark-" + name, 2, 2, 36, skin.colors[color], stroke=4))
        skin.list_pictures.add(name)


def tile(page, form, name, title, tab):
    """A plate that opens the page of a section, and its place."""
    x, y, width, height = form.overview[name]
    page.image(parts.panel(page.skin, width, height), x, y)
    page.button("openmenu_" + name, x, y, parts.glass(page.skin, width, height), tab,
                label=(title, 12, 27, width - 20, form.points, "muted", ON_PANEL, 0))
    return x, y, width, height


def key(page, rect, function, symbol, caption, enabled, tab, points, size):
    """A key with its caption below the icon, or beside it where it is low."""
    add = parts.tall_key if rect[3] > 90 else portrait_parts.icon_key
    add(page, function, *rect, symbol, caption, tab, points, size, enabled)


def progress(page, form):
    """How far the diagnosis is, as a text and as a bar."""
    skin, c = page.skin, page.skin.colors
    x, y, width, height = form.overview["progress"]
    page.image(parts.panel(skin, width, height), x, y)
    page.label("diagnosis_progress", x + 12, y + 26, width - 24, form.points, "text", ON_PANEL, lines=2)
    bar = (width - 24, 14)
    for state, color in (("empty", "empty"), ("full", "normal")):
        skin.picture("bar-diagnosis-" + state, *bar, draw.box(0, 0, *bar, c[color], radius=4))
    page.add("Bargraph", "diagnosis_percent", X=x + 12, Y=y + height - 22, Min=0, Max=100, Direction=1,
             Background="bar-diagnosis-empty.png", Progress="bar-diagnosis-full.png")


def overview(skin, form):
    page = form.add_page(skin, "diagnosis", "Diagnosis", "navigation")
    for i, (name, (function, symbol, caption, enabled)) in enumerate(zip(("start", "cancel"), RUN_KEYS)):
        x, y, width, height = form.overview[name]
        if name == "cancel" and width < 200:
            parts.tall_key(page, function, x, y, width, height, symbol, caption, i, 15, 36, enabled)
        else:
            parts.icon_key(page, function, x, y, width, height, symbol, caption, i, 20, 52, enabled)
    progress(page, form)

    x, y, width, height = tile(page, form, "codes", "Codes", 2)
    page.label("diagnosis_time", x + width - 252, y + 27, 240, form.points, "muted", ON_PANEL, 1)
    column = (width - 24) // 3
    for i, (kind, caption) in enumerate((("stored", "Stored"), ("pending", "Pending"),
                                         ("permanent", "Permanent"))):
        left = x + 12 + column * i
        page.label("word_" + caption, left, y + 53, column - 6, form.points, "text", ON_PANEL)
        page.label("diagnosis_" + kind, left, y + 86, column - 2, 20 if width > 500 else 18,
                   "text", ON_PANEL, lines=3)
    x, y, width, height = tile(page, form, "readiness", "Readiness", 3)
    page.label("diagnosis_ready", x + 12, y + 54, width - 24, 16 if width < 300 else 15, "text", ON_PANEL,
               lines=4 if width < 300 else 2)
    page.image(skin.picture("ready", 36, 36, icon("mark-good", 0, 0, 36, skin.colors["accent"], stroke=4)),
               x + width - 46, y + 5, "diagnosis_ready")
    x, y, width, height = tile(page, form, "vehicle", "Vehicle", 4)
    page.label("diagnosis_vin", x + 12, y + 52, width - 24, 18, "text", ON_PANEL)
    page.label("diagnosis_vincheck", x + 12, y + 76, width - 24, form.points, "muted", ON_PANEL)
    page.label("diagnosis_protocol", x + 12, y + 99, width - 24, form.points, "muted", ON_PANEL)
    for i, (name, caption) in enumerate((("tests", "Tests"), ("reports", "Reports"))):
        key(page, form.overview[name], "openmenu_" + name, name, caption, None, 5 + i, 16, 44)


def list_part(page, form, function, rect, empty):
    """A list in a panel. Above its entries stands when the diagnosis was made and how it ended, or how
    far the report is."""
    skin, c = page.skin, page.skin.colors
    x, y, width, height = rect
    page.image(parts.panel(skin, width, height), x, y)
    page.image(parts.frame(skin, width, height), x, y, "mouseover_list")
    if function == "diagnosis_reports":
        head = 34 if width > 500 else 60
        page.label("report_file", x + 12, y + 28, width - 24, form.points, "muted", ON_PANEL,
                   lines=1 if width > 500 else 2)
    elif width > 500:
        head = 34
        page.label("diagnosis_progress", x + 12, y + 28, 344, 14, "muted", ON_PANEL)
        page.label("diagnosis_time", x + 356, y + 28, 222, 14, "muted", ON_PANEL, 1)
    else:
        head = 60
        page.label("diagnosis_progress", x + 12, y + 28, width - 24, 15, "muted", ON_PANEL)
        page.label("diagnosis_time", x + 12, y + 54, width - 24, 15, "muted", ON_PANEL)
    page.add("List", function, X=x + 6, Y=y + 5 + head, Width=width - 12, Height=height - 10 - head,
             Font=NARROW, FontSize=17, FontStyle="Regular", RowHeight=TOUCH,
             FontColor=number(c["text"]), BackColor=number(c["panel"]), Tabindex=0, EmptyText=empty)


def text_part(page, rect, severity=False):
    """The whole text of the selected entry, of which its row may hold only a part, and what a code
    means to the driver."""
    x, y, width, height = rect
    page.image(parts.panel(page.skin, width, height), x, y)
    baseline = y + 30
    if severity:
        page.label("diagnosis_severity", x + 12, baseline + 4, width - 24, 20, "accent", ON_PANEL)
        baseline += 36
    page.label("diagnosis_selected", x + 12, baseline, width - 24, 17 if width > 500 else 16, "text",
               ON_PANEL, lines=2 + (width < 500) + (severity and width > 500))


def list_keys(page, form, keys):
    """Keys that move the selection of the list, and those of the page."""
    places = form.keys
    for i, (function, symbol) in enumerate((("value_+", "up"), ("value_-", "down"))):
        portrait_parts.picture_key(page, function, *places[i], symbol, 1 + i, 48)
    for i, (function, symbol, caption, enabled) in enumerate(keys):
        key(page, places[2 + i], function, symbol, caption, enabled, 3 + i, 15, 36)


def section_page(skin, form, section, following):
    page = form.add_page(skin, section.name, section.title, "navigationdiagnosis")
    form.step(page, "openmenu_" + following.name, 2, "next")
    severity = section.name == "codes"
    rect, text = form.lists, form.texts
    if severity:
        text = form.tall_texts
        rect = (*rect[:3], text[1] - 4 - rect[1])
    list_part(page, form, "diagnosis_" + section.name, rect, section.empty)
    text_part(page, text, severity)
    list_keys(page, form, section.keys)


def frame_page(skin, form):
    """The freeze frame of the code that was selected."""
    page = form.add_page(skin, "codeframe", "Freeze frame", "navigationcodes")
    list_part(page, form, "diagnosis_frame", form.lists, NOT_YET)
    text_part(page, form.texts)
    list_keys(page, form, RUN_KEYS)


def all_pages(skin, form):
    marks(skin)
    overview(skin, form)
    for i, section in enumerate(SECTIONS):
        section_page(skin, form, section, SECTIONS[(i + 1) % len(SECTIONS)])
    frame_page(skin, form)
