"""The pages and boxes for portrait screens. They have the names of those in pages.py, so that a page
stays open when the skin changes."""

import draw
import pages
import portrait_parts as parts
import sensors
from icons import icon
from palette import number
from portrait_parts import (BOTTOM, FULL, HALF, LEFT, ON_BACK, ON_KEY, ON_PANEL, RIGHT, THIRD, THIRDS,
                            TOP, PortraitSection)
from skin import NARROW, Section

DAY, NIGHT = "portrait-day", "portrait"

MENUS = ["mainmenu", "dashboard", "panel", "engine", "trims", "chart", "troublecodes", "sensors",
         "sensors2", "sensors3", "sensors4", "mediaplayer", "system"]

ALL_OFF = "sensoroff_all"

NAMES = [row[1] for row in sensors.SENSORS]
EACH = 14         # sensors on a page of keys
KEY_PAGES = 4


def general(skin):
    look = [("Look", "day")] if skin.name == DAY else []
    Section(skin, "General", [("Width", parts.WIDTH), ("Height", parts.HEIGHT),
                              ("Imagefolder", skin.name)] + look
            + [(f"Menu{i}", name) for i, name in enumerate(MENUS)])
    if len(NAMES) > EACH * KEY_PAGES:
        skin.fault("the pages of sensors have no room for all")


def other_look(skin):
    """The skin that is light where this one is dark, its icon and its word."""
    return (NIGHT, "moon", "Night") if skin.name == DAY else (DAY, "sun", "Day")


def grid(count, top, height, gap=4):
    """The places of tiles in two columns."""
    return [((LEFT, RIGHT)[i % 2], top + (height + gap) * (i // 2)) for i in range(count)]


def mainmenu(skin):
    c = skin.colors
    page = parts.page(skin, "mainmenu", "Main menu")
    head = (draw.box(0, 0, FULL, 98, c["panel"], c["edge"], 8, 1.5) + pages.mark(14, 25, 48, c)
            + draw.text(72, 58, "Dravik", 26, c["text"]))
    page.image(skin.picture("head", FULL, 98, head), LEFT, TOP)
    # Empty while all is well.
    page.label("obd_reason", 190, TOP + 30, 278, 15, "text", ON_PANEL, lines=3)
    keys = [("openmenu_dashboard", "dashboard", "Dashboard"), ("openmenu_panel", "panel", "My panel"),
            ("openmenu_engine", "engine", "Engine"), ("openmenu_trims", "trims", "Mixture"),
            ("openmenu_chart", "chart", "Chart"), ("openmenu_troublecodes", "codes", "Trouble codes"),
            ("openmenu_sensors", "sensors", "Sensors"), ("openmenu_mediaplayer", "media", "Media"),
            ("openmenu_system", "system", "System"), ("obd_connect", "connect", "Connect")]
    for i, ((x, y), (function, symbol, caption)) in enumerate(zip(grid(10, 178, 105), keys)):
        parts.tall_key(page, function, x, y, HALF, 105, symbol, caption, i, points=17, size=48)


RPM = dict(range=(0, 8000), sweep=(60, 300), outer=123, major=17, minor=10, step=1000,
           between=200, numbers=range(0, 8001, 1000), unit=1000, digits=21, zones=[(6500, 8000, "danger")])
SPEED = dict(range=(0, 240), sweep=(60, 300), outer=123, major=17, minor=10, step=20,
             between=10, numbers=range(0, 241, 40), digits=20)
RADIUS = 129


def big_dial(page, name, x, y, dial, tab):
    parts.dial(page, "dial-" + name.partition(".")[0], name, x, y, RADIUS, 18, dial)
    parts.needle(page, "sensor_" + name, x, y, dial, 23, 82)
    on = ("face0", "face1")
    page.label("word_live_" + name, x - 66, y + 62, 132, 28, "text", on, 2)
    page.label("sensorcaption_" + name, x - 88, y + 87, 176, 15, "muted", on, 2)
    page.label("sensorunit_" + name, x - 45, y + 109, 90, 15, "muted", on, 2)
    page.button("openvalue_" + name, x - RADIUS, y - RADIUS, parts.glass(page.skin, 258, 258), tab)


COOLANT = ("bar-coolant", "obd_05", 40, 130, [(108, 116, "warn"), (116, 130, "danger")], (80, 170))


def dashboard(skin):
    c = skin.colors
    page = parts.page(skin, "dashboard", "Dashboard")
    big_dial(page, "rpm.engine", 4 + RADIUS, TOP + RADIUS, RPM, 0)
    big_dial(page, "speed", 4 + RADIUS, TOP + 262 + RADIUS, SPEED, 1)

    x, width = 266, 210
    parts.tile(page, "temp.enginecoolant", x, TOP, width, 127, 2, 32, COOLANT)
    parts.tile(page, "temp.ambient", x, TOP + 131, width, 127, 3, 32)
    parts.tile(page, "volt.obdcontrolmodule", x, TOP + 262, width, 127, 4, 32)
    lamp_tile(page, x, TOP + 393, width, 127, 5)
    for i, (name, zones) in enumerate((("value.loadcalculated", []),
                                       ("value.fuellevel", [(0, 12, "warn")]))):
        parts.tile(page, name, (LEFT, RIGHT)[i], 600, HALF, 122, 6 + i, 32,
                   ("bar-" + name.partition(".")[2], None, 0, 100, zones, None))


def lamp_tile(page, x, y, width, height, tab=None):
    """The malfunction lamp, lit by a picture of its own, and the number of codes. With `tab` a touch
    opens the codes."""
    skin = page.skin
    c = skin.colors
    size = min(76, height - 20)
    dark = (draw.box(0, 0, width, height, c["panel"], c["edge"], 8, 1.5)
            + icon("engine", 12, (height - size) / 2, size, c["off"]))
    page.image(skin.picture(f"lamp-tile{width}", width, height, dark), x, y)
    lit = skin.picture(f"lamp-lit{size}", size + 8, size + 8,
                       icon("engine", 4, 4, size, c["warn"], stroke=3.8))
    page.image(lit, x + 8, y + (height - size) // 2 - 4, "obd_malfunction")
    left = 20 + size
    if height > 100:
        page.label("word_Codes", x + left + 4, y + 40, width - left - 8, 15, "muted", ON_PANEL)
        page.label("obd_troublecodescount", x + left + 4, y + 94, width - left - 8, 36, "text", ON_PANEL)
    else:
        page.label("obd_troublecodescount", x + left, y + height // 2 + 13, width - left - 4, 26, "text", ON_PANEL, 2)
    if tab is not None:
        page.button("openmenu_troublecodes", x, y, parts.glass(skin, width, height), tab)


def engine(skin):
    page = parts.page(skin, "engine", "Engine")
    names = ["rpm.engine", "speed", "value.loadcalculated", "value.throttle",
             "temp.enginecoolant", "temp.intake", "temp.ambient", "volt.obdcontrolmodule",
             "value.airflowrate", "p.intakemanifold", "p.barometric", "angle.ignitiontiming",
             "value.fuellevel", "p.fuelrail", "p.fuelraildirect", "time.enginestart"]
    for i, ((x, y), name) in enumerate(zip(grid(16, TOP, 77), names)):
        parts.tile(page, name, x, y, HALF, 77, i, 26)


TRIM = dict(range=(-25, 25), sweep=(60, 300), outer=64, major=12, minor=7, step=5,
            between=1, numbers=(-20, -10, 0, 10, 20), digits=20, thick=4,
            zones=[(-25, -10, "warn"), (-10, 10, "normal"), (10, 25, "warn")])


def trims(skin):
    page = parts.page(skin, "trims", "Mixture")
    names = ["value.shorttermfueltrimbank1", "value.longtermfueltrimbank1",
             "value.shorttermfueltrimbank2", "value.longtermfueltrimbank2"]
    height = 202
    for i, ((x, y), name) in enumerate(zip(grid(4, TOP, height), names)):
        page.image(parts.panel(skin, HALF, height), x, y)
        middle = x + HALF // 2
        parts.dial(page, "dial-trim", name, middle, y + 104, 69, 10, TRIM)
        parts.needle(page, "sensor_" + name, middle, y + 104, TRIM, 14, 58, 5, 2)
        page.label("word_live_" + name, middle - 92, y + 190, 116, 24, "text", ON_PANEL, 1)
        page.label("sensorunit_" + name, middle + 30, y + 190, 50, 15, "muted", ON_PANEL)
        page.button("openvalue_" + name, x, y, parts.glass(skin, HALF, height), i,
                    label=("sensorcaption_" + name, 12, 27, HALF - 16, 15, "muted", ON_PANEL, 0))
    # A bar counts in whole numbers, so it reads the raw value: 51200 is one volt.
    oxygen = [("volt.lambdabank1sensor1", "obd_14"), ("volt.lambdabank1sensor2", "obd_15"),
              ("volt.lambdabank2sensor1", "obd_18"), ("volt.lambdabank2sensor2", "obd_19")]
    for i, ((x, y), (name, source)) in enumerate(zip(grid(4, 490, 114), oxygen)):
        parts.tile(page, name, x, y, HALF, 114, 4 + i, 28,
                   ("bar-oxygen", source, 0, 1, [], (0, 51200)))


def chart(skin):
    page = parts.page(skin, "chart", "Chart")
    names = ["rpm.engine", "speed", "value.loadcalculated", "value.throttle"]
    height = 138
    for i, name in enumerate(names):
        y = TOP + (height + 4) * i
        page.image(parts.panel(skin, FULL, height), LEFT, y)
        page.label("sensorcaption_" + name, 16, y + 28, 200, 15, "muted", ON_PANEL)
        page.label("word_live_" + name, 220, y + 30, 184, 20, "text", ON_PANEL, 1)
        page.label("sensorunit_" + name, 410, y + 30, 62, 15, "muted", ON_PANEL)
        parts.trace(page, "sensor_" + name, 9, y + 37, 462, height - 43)
    keys = [("pause_chartall", "pause", "Pause"), ("clr_chartall", "clear", "Clear"),
            ("snapshot_all", "snapshot", "Picture")]
    for x, i in zip(THIRDS, range(3)):
        function, symbol, caption = keys[i]
        parts.tall_key(page, function, x, 646, THIRD, 76, symbol, caption, i, size=36)


def list_panel(page, function, top, height, head, tab, **keys):
    """A list in a panel, which has a frame while the list is selected; `head` pixels lie above it."""
    c = page.skin.colors
    page.image(parts.panel(page.skin, FULL, height), LEFT, top)
    page.image(parts.frame(page.skin, FULL, height), LEFT, top, "mouseover_list")
    page.add("List", function, X=10, Y=top + 5 + head, Width=460, Height=height - 10 - head,
             Font=NARROW, FontSize=17, FontStyle="Regular", RowHeight=64,
             FontColor=number(c["text"]), BackColor=number(c["panel"]), Tabindex=tab, **keys)


def step_keys(page, xs, y, width, height, tab):
    """Keys that move the selection of the list."""
    size = 48
    for i, (function, symbol) in enumerate((("value_+", "up"), ("value_-", "down"))):
        page.button(function, xs[i], y, parts.key(page.skin, width, height), tab + i,
                    image=(parts.icon_picture(page.skin, symbol, size), (width - size) // 2,
                           (height - size) // 2))


def troublecodes(skin):
    page = parts.page(skin, "troublecodes", "Trouble codes", command="obd_gettroublecodes")
    list_panel(page, "troublecodes", TOP, 330, 0, 0, UnreadText="word_Not read yet")
    # The whole text of the selected code.
    page.image(parts.panel(skin, FULL, 92), LEFT, 410)
    page.label("listentry_0", 14, 434, 452, 16, "text", ON_PANEL, lines=3)
    step_keys(page, THIRDS, 506, THIRD, 72, 1)
    lamp_tile(page, THIRDS[2], 506, THIRD, 72)
    keys = [("obd_gettroublecodes", "read", "Read", "obd_connected"),
            ("obd_cleartroublecodes", "clear", "Clear", "obd_connected")]
    for i, (function, symbol, caption, enabled) in enumerate(keys):
        parts.icon_key(page, function, (LEFT, RIGHT)[i], 582, HALF, 68, symbol, caption, 3 + i,
                       points=17, enabled=enabled)
    parts.icon_key(page, "openmenu_freezeframe", LEFT, 654, FULL, 68, "freeze", "Freeze frame", 5,
                   points=17, enabled="obd_codes")


def freezeframe(skin):
    page = parts.page(skin, "freezeframe", "Freeze frame", "navigationback")
    names = ["rpm.engine", "speed", "value.loadcalculated", "temp.enginecoolant", "temp.intake",
             "value.throttle", "value.shorttermfueltrimbank1", "value.longtermfueltrimbank1",
             "value.airflowrate", "p.intakemanifold", "p.fuelrail", "angle.ignitiontiming"]
    height = 104
    for (x, y), name in zip(grid(12, TOP, height), names):
        page.image(parts.panel(skin, HALF, height), x, y)
        page.label("sensorcaption_" + name, x + 12, y + 30, HALF - 16, 15, "muted", ON_PANEL)
        page.label("word_live_" + name, x + 6, y + 84, HALF - 86, 32, "text", ON_PANEL, 1)
        page.label("sensorunit_" + name, x + HALF - 74, y + 84, 68, 15, "muted", ON_PANEL)


def sensor_pages(skin):
    """All sensors with their switches, and the keys for all on and all off."""
    c = skin.colors
    width, height = HALF, 77
    off = (draw.box(width - 78, 36, 66, 34, c["empty"], c["muted"], 17, 2)
           + f'<circle cx="{width - 60}" cy="53" r="10" fill="{c["muted"]}"/>')
    lit = skin.picture("switch-on", 66, 34, draw.box(0, 0, 66, 34, c["accent"], c["accent"], 17, 2)
                       + f'<circle cx="48" cy="17" r="10" fill="{c["panel"]}"/>')
    for number_ in range(KEY_PAGES):
        page = parts.page(skin, "sensors" + (str(number_ + 1) if number_ else ""),
                          f"Sensors {number_ + 1} of {KEY_PAGES}")
        places = grid(EACH + 2, TOP, height)
        shown = NAMES[EACH * number_:EACH * (number_ + 1)]
        for i, ((x, y), name) in enumerate(zip(places, shown)):
            page.button("sensortoggle_" + name, x, y,
                        parts.key(skin, width, height, "switch", off), i, image=(lit, width - 78, 36),
                        state="sensoron_" + name,
                        label=("sensorcaption_" + name, 12, 27, width - 18, 15, "text", ON_KEY, 0))
        parts.plain_key(page, "sensoron_all", *places[EACH], width, height, "word_All on", EACH)
        parts.plain_key(page, ALL_OFF, *places[EACH + 1],
                        width, height, "word_All off", EACH + 1)


def choose_pages(skin):
    """Every sensor as a key that puts it into a tile of the panel."""
    width, height = HALF, 77
    names = ["choose" + (str(i + 1) if i else "") for i in range(KEY_PAGES)]
    for number_, name in enumerate(names):
        page = parts.page(skin, name, "Choose a value", "navigationchoose")
        places = grid(EACH + 2, TOP, height)
        shown = NAMES[EACH * number_:EACH * (number_ + 1)]
        for i, ((x, y), sensor) in enumerate(zip(places, shown)):
            page.button("choose_" + sensor, x, y, parts.key(skin, width, height), i,
                        label=("sensorcaption_" + sensor, 12, 46, width - 18, 16, "text", ON_KEY, 0))
        for i, (step, symbol) in enumerate(((-1, "previous"), (1, "next"))):
            page.button("openmenu_" + names[(number_ + step) % KEY_PAGES], *places[EACH + i],
                        parts.key(skin, width, height), EACH + i,
                        image=(parts.icon_picture(skin, symbol, 40), (width - 40) // 2,
                               (height - 40) // 2))


def choose_navigation(skin):
    """The way back from the pages to choose from, whichever of them is open."""
    section = PortraitSection(skin, "navigationchoose")
    parts.icon_key(section, "openmenu_panel", LEFT, parts.NAVIGATION_TOP, FULL, 66, "back", "Back", 90,
                   points=17)


def panel(skin):
    page = parts.page(skin, "panel", "My panel")
    height, corner = 158, 76
    for i in range(4):
        name = f"panel{i + 1}"
        y = TOP + (height + 4) * i
        page.image(parts.panel(skin, FULL, height), LEFT, y)
        page.label("word_live_" + name, 10, y + 130, 300, 50, "text", ON_PANEL, 1)
        page.label("sensorunit_" + name, 318, y + 130, 74, 18, "muted", ON_PANEL)
        page.button("openvalue_" + name, LEFT, y, parts.glass(skin, FULL - corner, height), 2 * i,
                    label=("sensorcaption_" + name, 14, 36, FULL - corner - 20, 18, "muted",
                           ON_PANEL, 0))
        page.button(f"panel_{i + 1}", LEFT + FULL - corner, y, parts.key(skin, corner, height),
                    2 * i + 1, image=(parts.icon_picture(skin, "settings", 40), (corner - 40) // 2,
                                      (height - 40) // 2))


def value(skin):
    page = parts.page(skin, "value", "sensorcaption_picked", "navigationback")
    page.image(parts.panel(skin, FULL, 220), LEFT, TOP)
    page.label("word_live_picked", 8, TOP + 142, 376, 64, "text", ON_PANEL, 1)
    page.label("sensorunit_picked", 392, TOP + 142, 82, 20, "muted", ON_PANEL)
    for x, caption, function in ((LEFT, "Lowest", "lowest_picked"), (RIGHT, "Highest", "highest_picked")):
        page.image(parts.panel(skin, HALF, 112), x, 300)
        page.label("word_" + caption, x + 12, 330, HALF - 24, 15, "muted", ON_PANEL)
        page.label(function, x + 12, 390, HALF - 24, 36, "text", ON_PANEL, 2)
    page.image(parts.panel(skin, FULL, 306), LEFT, 416)
    parts.trace(page, "sensor_picked", 9, 422, 462, 294)


def mediaplayer(skin):
    c = skin.colors
    page = parts.page(skin, "mediaplayer", "Media")
    pages.list_pictures(skin)
    list_panel(page, "media", TOP, 410, 36, 0)
    page.label("currentfolder", 16, TOP + 32, 322, 15, "muted", ON_PANEL)
    page.label("indexlabel", 342, TOP + 32, 126, 15, "muted", ON_PANEL, 1)
    step_keys(page, (LEFT, RIGHT), 490, HALF, 72, 1)

    # The panel lies beneath the slider, so that a frame around it can show the selection.
    page.image(parts.panel(skin, FULL, 76), LEFT, 566)
    page.image(parts.frame(skin, FULL, 76), LEFT, 566, "mouseover_slider_slider0")
    track = draw.box(0, 0, 464, 68, c["panel"], None, 6)
    for name, fill in (("track", "empty"), ("track-full", "accent")):
        skin.picture(name, 464, 68, track + draw.box(10, 27, 444, 14, c[fill], None, 6))
    for name, fill, edge in (("knob", c["key"], c["keyedge"]), ("knob-over", c["focus"], c["accent"]),
                             ("knob-down", c["down"], c["accent"])):
        skin.picture(name, 80, 68, draw.box(2, 1, 76, 66, fill, edge, 10, 2.5)
                     + f'<path d="M32 22 V46 M40 22 V46 M48 22 V46" stroke="{c["muted"]}"'
                     ' stroke-width="3" stroke-linecap="round"/>')
    page.add("Slider", "listview", X=8, Y=570, Direction=1, Tabindex=3, Background="track.png",
             Progress="track-full.png", Bar="knob.png", BarOver="knob-over.png",
             BarDown="knob-down.png")
    parts.icon_key(page, "gofolder_parent", LEFT, 646, HALF, 76, "parent", "Folder up", 4, points=17)
    page.label("word_Touch an entry twice", RIGHT + 6, 678, HALF - 12, 15, "muted", ON_BACK, 2)
    page.label("word_to open it", RIGHT + 6, 704, HALF - 12, 15, "muted", ON_BACK, 2)


def system(skin):
    page = parts.page(skin, "system", "System")
    look, look_icon, look_word = other_look(skin)
    keys = [("obd_connect", "connect", "Connect", None),
            ("obd_disconnect", "disconnect", "Disconnect", None),
            ("obd_find", "find", "Find", None), ("config", "settings", "Settings", None),
            ("openmenu_welcome", "language", "Language", None),
            ("skin_" + look, look_icon, look_word, None),
            ("keyboard", "keyboard", "Keyboard", "obd_keyboard"),
            ("openmenu_sensors", "sensors", "Sensors", None),
            ("minimize", "minimise", "Minimise", None),
            ("showquery_End the program?:quit", "end", "End", None)]
    for i, ((x, y), (function, symbol, caption, enabled)) in enumerate(zip(grid(10, TOP, 64), keys)):
        parts.icon_key(page, function, x, y, HALF, 64, symbol, caption, i, points=16, enabled=enabled)
    page.image(parts.panel(skin, FULL, 306), LEFT, 416)
    rows = [("Program", "text"), ("Interface", "obd_interface"), ("Protocol", "obd_protocol")]
    for i, (caption, function) in enumerate(rows):
        baseline = 446 + 34 * i
        page.label("word_" + caption, 10, baseline, 106, 15, "muted", ON_PANEL)
        page.label(function, 116, baseline, 360, 15, "text", ON_PANEL,
                   caption="APP_Title" if function == "text" else "")
    # Why there is no connection, and where the search is; both empty otherwise.
    page.label("obd_reason", 16, 556, 450, 15, "text", ON_PANEL, lines=3)
    page.label("obd_finding", 16, 638, 450, 15, "muted", ON_PANEL, lines=3)


def welcome_page(skin, number_, following, caption):
    """One of three steps, without the strip and the keys of other pages."""
    name = "welcome" + (str(number_) if number_ > 1 else "")
    page = PortraitSection(skin, name, [("CommonObjects0", "backdrop")])
    page.image(skin.picture("mark", 64, 64, pages.mark(0, 0, 64, skin.colors)), 20, 24)
    page.label("word_Welcome", 100, 54, 370, 24, "text", ON_BACK)
    page.label(f"word_Step {number_} of 3", 100, 88, 370, 16, "muted", ON_BACK)
    parts.plain_key(page, "welcomedone", LEFT, 716, HALF, 78, "word_Skip", 90, 18)
    parts.plain_key(page, following, RIGHT, 716, HALF, 78, "word_" + caption, 91, 18)
    return page


def welcome(skin):
    page = welcome_page(skin, 1, "openmenu_welcome2", "Next")
    page.label("word_Language", 20, 150, 440, 18, "text", ON_BACK)
    # Everybody finds the own language by its own name.
    for i, (language, own) in enumerate((("English", "English"), ("German", "Deutsch"),
                                         ("French", "Français"), ("Spanish", "Español"),
                                         ("Italian", "Italiano"))):
        parts.choice_key(page, "language_" + language, LEFT, 170 + 104 * i, FULL, 96, "=" + own, i,
                         "language_" + language, 24)

    page = welcome_page(skin, 2, "openmenu_welcome3", "Next")
    page.label("word_Plug in the interface and switch on the ignition.", 20, 150, 440, 18, "text",
               ON_BACK, lines=2)
    parts.icon_key(page, "obd_find", LEFT, 206, FULL, 110, "find", "Find the interface", 0, 22, 56)
    page.image(parts.panel(skin, FULL, 190), LEFT, 322)
    page.label("obd_finding", 18, 352, 444, 16, "text", ON_PANEL, lines=6)
    parts.plain_key(page, "obd_find", LEFT, 518, FULL, 76, "word_Cancel", 1, 18, enabled="obd_finding")
    parts.icon_key(page, "demo", LEFT, 612, FULL, 84, "demo", "Try the demo", 2, 18, 44)

    page = welcome_page(skin, 3, "welcomedone", "Done")
    page.label("word_Units", 20, 160, 440, 18, "text", ON_BACK)
    for i, (units, caption) in enumerate((("metric", "Metric"), ("imperial", "Imperial"))):
        parts.choice_key(page, "units_" + units, LEFT, 180 + 104 * i, FULL, 96, "word_" + caption, i,
                         "units_" + units, 22)
    page.label("word_Day or night", 20, 440, 440, 18, "text", ON_BACK)
    for i, (other, caption) in enumerate(((DAY, "Day"), (NIGHT, "Night"))):
        parts.choice_key(page, "skin_" + other, LEFT, 460 + 104 * i, FULL, 96, "word_" + caption,
                         2 + i, "always" if other == skin.name else None, 22)


def shortcuts(skin):
    c = skin.colors
    box = PortraitSection(skin, "shortcuts", [("BackgroundX", 0), ("BackgroundY", 0)])
    left, top, width, height = 4, 230, 472, 486
    shapes = (f'<rect width="480" height="800" fill="{c["veil"]}" fill-opacity="0.62"/>'
              + draw.box(left, top, width, height, c["panel"], c["accent"], 12, 2))
    box.image(skin.picture("shortcuts", 480, 800, shapes), 0, 0)
    box.label("word_Shortcuts", left + 16, top + 36, width - 32, 18, "muted", ON_PANEL)
    look, look_icon, look_word = other_look(skin)
    keys = [("openmenu_dashboard", "dashboard", "Dashboard"), ("openmenu_panel", "panel", "My panel"),
            ("openmenu_engine", "engine", "Engine"), ("openmenu_chart", "chart", "Chart"),
            ("openmenu_troublecodes", "codes", "Codes"), ("openmenu_previous", "back", "Last page"),
            ("obd_connect", "connect", "Connect"), ("obd_disconnect", "disconnect", "Disconnect"),
            ("keyboard", "keyboard", "Keyboard"), ("skin_" + look, look_icon, look_word),
            ("openmenu_welcome", "language", "Language"), ("closebox", "no", "Close")]
    for i, (function, symbol, caption) in enumerate(keys):
        parts.tall_key(box, function, left + 6 + 154 * (i % 3), top + 52 + 107 * (i // 3), 152, 104,
                       symbol, caption, i, enabled="obd_keyboard" if function == "keyboard" else None)


def messages(skin):
    c = skin.colors
    for name, symbol, color, answers in (("warning", "warning", "warn", ["OK"]),
                                         ("info", "info", "accent", ["OK"]),
                                         ("query", "query", "accent", ["Yes", "No"])):
        width, height = 456, 360
        skin.picture("box-" + name, width, height,
                     draw.box(0, 0, width, height, c["panel"], c[color], 14, 3)
                     + icon(symbol, 22, 28, 60, c[color]))
        box = PortraitSection(skin, name, [("Background", f"box-{name}.png"), ("Dim", 50)])
        box.lines += ["Label0Function=word_message", "Label0X=98", "Label0Y=28", "Label0Width=340",
                      "Label0Height=220", f"Label0Font={NARROW}", "Label0FontSize=17",
                      "Label0Alignment=0", f"Label0Color={number(c['text'])}"]
        for i, answer in enumerate(answers):
            x = (width - 204) // 2 if len(answers) == 1 else 18 + 216 * i
            key = parts.key(skin, 204, 84)
            keys = dict(X=x, Y=258, Up=key + "-up.png", Over=key + "-over.png", Down=key + "-down.png")
            keys.update(box.caption(answer, 204, "word_" + answer, 4, 52, 196, 20, "text", ON_KEY, 2))
            box.add("Button", answer.lower(), **keys)


def all_pages(skin):
    general(skin)
    parts.shared_sections(skin)
    choose_navigation(skin)
    for build in (mainmenu, dashboard, engine, trims, chart, troublecodes, freezeframe, sensor_pages,
                  panel, choose_pages, value, mediaplayer, system, welcome, shortcuts, messages):
        build(skin)
