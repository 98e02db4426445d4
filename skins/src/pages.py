"""The pages and boxes."""

import draw
import parts
import sensors
from icons import icon
from palette import number
from parts import COLUMNS, ON_PANEL, ROWS, THIRD, THIRDS
from skin import LEAST_TEXT, NARROW, PLAIN, TOUCH, Section
from values import choices, panel, value
from welcome import find, language, welcome

MENUS = ["mainmenu", "dashboard", "panel", "engine", "trims", "oxygen", "chart", "troublecodes",
         "sensors", "sensors2", "sensors3", "sensors4", "sensors5", "sensors6", "sensors7", "mediaplayer",
         "system"]


def general(skin):
    Section(skin, "General", [("Width", 800), ("Height", 480), ("Imagefolder", skin.name)]
            + ([("Look", "day")] if skin.name == "day" else [])
            + [(f"Menu{i}", name) for i, name in enumerate(MENUS)])


def mark(x, y, size, c):
    """Our own sign: a small dial."""
    middle, radius = size / 2, size / 2
    return (f'<g transform="translate({x} {y})">'
            + draw.arc(middle, middle, radius - 3, 50, 250, c["accent"], size * 0.09)
            + draw.arc(middle, middle, radius - 3, 262, 310, c["danger"], size * 0.09)
            + f'<path d="M{middle} {middle} L{middle + radius * 0.5:.2f} {middle - radius * 0.5:.2f}"'
            f' stroke="{c["text"]}" stroke-width="{size * 0.08:.2f}" stroke-linecap="round"/>'
            f'<circle cx="{middle}" cy="{middle}" r="{size * 0.09:.2f}" fill="{c["text"]}"/></g>')


def mainmenu(skin):
    c = skin.colors
    page = parts.page(skin, "mainmenu", "Main menu")
    head = (draw.box(0, 0, 792, 58, c["panel"], c["edge"], 8, 1.5) + mark(14, 8, 42, c)
            + draw.text(70, 38, "Dravik", 26, c["text"]))
    page.image(skin.picture("head", 792, 58, head), 4, 4)
    page.label("obd_reason", 200, 28, 584, 14, "text", ON_PANEL, lines=2)
    tiles = [("openmenu_dashboard", "dashboard", "Dashboard"),
             ("openmenu_panel", "panel", "My panel"), ("openmenu_engine", "engine", "Engine"),
             ("openmenu_trims", "trims", "Mixture"), ("openmenu_chart", "chart", "Chart"),
             ("openmenu_troublecodes", "codes", "Trouble codes"),
             ("openmenu_sensors", "sensors", "Sensors"), ("openmenu_mediaplayer", "media", "Media"),
             ("openmenu_system", "system", "System"), ("config", "settings", "Settings"),
             parts.other_look(skin), ("obd_connect", "connect", "Connect")]
    for i, (function, symbol, caption) in enumerate(tiles):
        parts.tall_key(page, function, COLUMNS[i % 4], 68 + 112 * (i // 4), 195, 106, symbol,
                       caption, i, points=17, size=48)


RPM = dict(range=(0, 8000), sweep=(60, 300), outer=139, major=20, minor=11, step=1000,
           between=200, numbers=range(0, 8001, 1000), unit=1000, digits=21, zones=[(6500, 8000, "danger")])
SPEED = dict(range=(0, 240), sweep=(60, 300), outer=139, major=20, minor=11, step=20,
             between=10, numbers=range(0, 241, 40), digits=21)
RADIUS = 147


def big_dial(page, name, x, y, dial, tab, remark=""):
    skin = page.skin
    c = skin.colors
    middle = RADIUS
    parts.dial(page, "dial-" + name.split(".")[0], x, y, RADIUS, 20, dial,
               draw.text(middle, middle - 34, remark, 19, c["muted"], "middle", False, True),
               "known_" + name)
    # The needle ends where the numbers begin.
    parts.needle(page, "sensor_" + name, x, y, *dial["range"], *dial["sweep"], 26, 92)
    on = ("face0", "face1")
    # The first and the last number stand to both sides of the unit, and above the caption.
    page.label("sensorunit_" + name, x - 40, y + 51, 80, 14, "muted", on, 2)
    page.label("sensorcaption_" + name, x - 95, y + 82, 190, 14, "muted", on, 2)
    page.label("live_" + name, x - 75, y + 122, 150, 29, "text", on, 2)
    page.button("openvalue_" + name, x - RADIUS, y - RADIUS, parts.glass(skin, 2 * RADIUS, 2 * RADIUS),
                tab)


def code_count(page, x, y):
    """The number of stored codes, in the colour of the panel: only the plate beneath, which is there
    while there are codes, lets it be seen. Before they are read there is no number."""
    skin = page.skin
    plate = draw.box(0, 0, 88, 58, skin.colors["accent"], radius=10)
    page.image(skin.picture("count", 88, 58, plate), x, y, "obd_codes")
    page.label("obd_troublecodescount", x + 4, y + 43, 80, 28, "panel", ("accent",), 2)


def dashboard(skin):
    c = skin.colors
    page = parts.page(skin, "dashboard", "Dashboard")
    big_dial(page, "rpm.engine", 151, 151, RPM, 0, "× 1000")
    big_dial(page, "speed", 649, 151, SPEED, 1)

    for y, name in ((4, "temp.ambient"), (98, "volt.obdcontrolmodule")):
        parts.value_tile(page, name, 304, y, 192, 88, 2 + (y > 4))
        parts.figure(page, name, 308, y + 74, 148, 29, 28)

    # The lamp: dark in the tile, lit as a picture of its own, and a touch opens the codes.
    dark = (draw.box(0, 0, 192, 106, c["panel"], c["edge"], 8, 1.5)
            + icon("engine", 14, 32, 64, c["off"]))
    page.image(skin.picture("lamp-tile", 192, 106, dark), 304, 192)
    page.image(skin.picture("lamp-lit", 72, 72, icon("engine", 4, 4, 64, c["warn"], stroke=3.8)),
               314, 220, "obd_lamp")
    page.button("openmenu_troublecodes", 304, 192, parts.glass(skin, 192, 106), 4,
                label=("Trouble codes", 10, 24, 176, 14, "muted", ON_PANEL, 0))
    code_count(page, 398, 230)

    bars = [("temp.enginecoolant", "bar-coolant", 40, 130, "obd_05", (80, 170),
             [(108, 116, "warn"), (116, 130, "danger")]),
            ("value.loadcalculated", "bar-load", 0, 100, None, None, []),
            ("value.fuellevel", "bar-fuel", 0, 100, None, None,
             [(0, 12, "warn")])]
    for i, (x, (name, picture, low, high, source, shown, zones)) in enumerate(zip(THIRDS, bars)):
        y = 304
        # A raw value does not know that its sensor is off.
        empty = parts.empty_bar(skin, picture, THIRD - 24, 18, low, high, zones)
        parts.value_tile(page, name, x, y, THIRD, 96, 5 + i, (empty, 12, 70) if source else None)
        parts.figure(page, name, x + 12, y + 62, 198, 29, 36)
        # The temperature's bar reads the raw value, which is the same in every unit.
        parts.bar(page, source or "sensor_" + name, x + 12, y + 70, picture, THIRD - 24, 18, low,
                  high, zones, shown)


def engine(skin):
    page = parts.page(skin, "engine", "Engine")
    names = ["rpm.engine", "speed", "value.loadcalculated", "value.throttle",
             "temp.enginecoolant", "temp.intake", "temp.ambient", "volt.obdcontrolmodule",
             "value.airflowrate", "p.intakemanifold", "p.barometric", "angle.ignitiontiming",
             "value.fuellevel", "p.fuelrail", "p.fuelraildirect", "value.loadabsolute",
             "value.acceleratorpedalpositiond", "value.commandedthrottlecontrol",
             "time.enginestart"]
    for i, name in enumerate(names):
        parts.sensor_tile(page, name, COLUMNS[i % 4], ROWS[i // 4], i)
    parts.icon_key(page, "openmenu_sensors", COLUMNS[3], ROWS[4], *parts.TILE, "sensors", "Sensors",
                   19, size=36)


TRIM = dict(range=(-25, 25), sweep=(60, 300), outer=67, major=10, minor=7, step=25,
            between=5, numbers=(-25, 25), digits=19, thick=4,
            zones=[(-25, -20, "warn"), (-10, 10, "normal"), (20, 25, "warn")])


def trims(skin):
    page = parts.page(skin, "trims", "Mixture")
    names = ["value.shorttermfueltrimbank1", "value.longtermfueltrimbank1",
             "value.shorttermfueltrimbank2", "value.longtermfueltrimbank2"]
    for i, (x, name) in enumerate(zip(COLUMNS, names)):
        parts.value_tile(page, name, x, 4, 195, 210, i)
        parts.dial(page, "dial-trim", x + 97, 107, 72, 9, TRIM, lit="known_" + name)
        parts.needle(page, "sensor_" + name, x + 97, 107, *TRIM["range"], *TRIM["sweep"], 14, 61, 5, 2)
        parts.figure(page, name, x + 4, 205, 122, 23, 40)
    oxygen = [("volt.lambdabank1sensor1", "obd_14"), ("volt.lambdabank1sensor2", "obd_15"),
              ("volt.lambdabank2sensor1", "obd_18"), ("volt.lambdabank2sensor2", "obd_19")]
    for i, (name, source) in enumerate(oxygen):
        x, y = COLUMNS[i], 219
        empty = parts.empty_bar(skin, "bar-oxygen", 175, 16, 0, 1, [])
        parts.sensor_tile(page, name, x, y, 4 + i, 100, (empty, 10, 76))
        # A bar counts in whole numbers, so it reads the raw value: 51200 is one volt.
        parts.bar(page, source, x + 10, y + 76, "bar-oxygen", 175, 16, 0, 1, [], (0, 51200))
    tiles = ["value.commandedequivalence", "temp.catalystbank1sensor1", "temp.catalystbank2sensor1"]
    for i, name in enumerate(tiles):
        parts.sensor_tile(page, name, COLUMNS[i], ROWS[4], 8 + i)
    width, height = parts.TILE
    page.button("openmenu_oxygen", COLUMNS[3], ROWS[4], parts.key(skin, width, height), 11,
                label=("Oxygen sensors", 4, 45, width - 8, 16, "text", parts.ON_KEY, 2))


OXYGEN_PLACES = [(1, 1), (1, 2), (2, 1), (2, 2)]
FRONT = [(1, 1), (2, 1)]
# What the oxygen sensors tell, by their kind: caption, sensor, whether it has a unit, and where. The
# rear ones of the narrow band take no part in a trim.
OXYGEN_ROWS = [
    ("Narrow-band", [("Voltage", "volt.lambdabank%dsensor%d", True, OXYGEN_PLACES),
                     ("Trim", "value.lambdatrimbank%dsensor%d", True, FRONT)]),
    ("Wide-range", [("Lambda", "value.lambdabank%dsensor%dwrvolt", False, OXYGEN_PLACES),
                    ("Voltage", "volt.lambdabank%dsensor%dwr", True, OXYGEN_PLACES)]),
    ("Wide-range", [("Lambda", "value.lambdabank%dsensor%dwramp", False, OXYGEN_PLACES),
                    ("Current", "amp.lambdabank%dsensor%dwr", True, OXYGEN_PLACES)]),
]


def oxygen(skin):
    """The oxygen sensors, one to a row: whatever of it the car's kind of sensors tells."""
    page = parts.page(skin, "oxygen", "Oxygen sensors")
    left, width = 84, 116
    columns = [column for _, columns in OXYGEN_ROWS for column in columns]
    xs = [left + (width + 2) * i + 2 * (i // 2) for i in range(6)]
    for title, first, last in (("Narrow-band", 0, 1), ("Wide-range", 2, 5)):
        page.label("word_" + title, xs[first], 21, xs[last] + width - xs[first], 14, "text", parts.ON_BACK, 2)
    for x, (caption, name, unit, _) in zip(xs, columns):
        page.label("word_" + caption, x, 42, width, 14, "muted", parts.ON_BACK, 2)
        if unit:
            page.label("sensorunit_" + name % OXYGEN_PLACES[0], x, 63, width, 14, "muted", parts.ON_BACK, 2)
    tab = 0
    for k, place in enumerate(OXYGEN_PLACES):
        y, height = 70 + 83 * k, 79
        page.image(parts.panel(skin, 792, height), 4, y)
        for i, (x, (_, name, _, places)) in enumerate(zip(xs, columns)):
            if place in places:
                page.label("live_" + name % place, x, y + 52, width, 24, "text", ON_PANEL, 2)
                more = 0 if i else left - 4
                page.button("openvalue_" + name % place, x - more, y,
                            parts.glass(skin, width + more, height), tab,
                            label=None if i else ("'B%d S%d" % place, 8, 49, left - 12, 18, "text",
                                                  ON_PANEL, 0))
                tab += 1


def chart(skin):
    c = skin.colors
    page = parts.page(skin, "chart", "Chart")
    names = ["rpm.engine", "speed", "value.loadcalculated", "value.throttle"]
    skin.picture("chart", 338, 152, draw.box(0, 0, 338, 152, c["face1"], radius=5))
    for i, name in enumerate(names):
        x, y = 4 + 350 * (i % 2), 4 + 200 * (i // 2)
        page.image(parts.panel(skin, 346, 195), x, y)
        page.label("sensorcaption_" + name, x + 10, y + 29, 168, 14, "muted", ON_PANEL)
        parts.figure(page, name, x + 180, y + 30, 103, 21, 56)
        page.add("Chart", "sensor_" + name, X=x + 4, Y=y + 39, Time=60, Mode=0,
                 Color=number(c["accent"]), GridColor=number(c["grid"]), Background="chart.png",
                 Font=NARROW, FontSize=LEAST_TEXT, Known=1)
        page.button("openvalue_" + name, x, y, parts.glass(skin, 346, 195), i)
    keys = [("pause_chartall", "pause", "Pause"), ("clr_chartall", "clear", "Clear"),
            ("snapshot_all", "snapshot", "Picture")]
    for i, (function, symbol, caption) in enumerate(keys):
        parts.tall_key(page, function, 704, 4 + 133 * i, 92, 129, symbol, caption, 4 + i)


def list_page(page, function, top, bottom, points, tab, **keys):
    """A list on a panel that ends at `bottom`, with room above it."""
    skin = page.skin
    c = skin.colors
    page.image(parts.panel(skin, 586, bottom - 4), 4, 4)
    page.image(parts.frame(skin, 586, bottom - 4), 4, 4, "mouseover_list")
    page.add("List", function, X=10, Y=9 + top, Width=574, Height=bottom - 14 - top, Font=NARROW,
             FontSize=points, FontStyle="Regular", RowHeight=TOUCH, FontColor=number(c["text"]),
             BackColor=number(c["panel"]), Tabindex=tab, **keys)


def list_pictures(skin):
    """What stands before the entries of a media list, by the names that the list asks for."""
    for name, symbol in (("parent", "parent"), ("folder", "folder"), ("harddisk", "harddisk"),
                         ("cddrive", "cddrive"), ("removeable", "removeable"),
                         ("pls", "playlist"), ("standard", "media")):
        skin.picture(name, 40, 40, icon(symbol, 2, 2, 36, skin.colors["accent"]))
        skin.list_pictures.add(name)


def step_keys(page, top, height, tab):
    """Keys that move the selection of the list."""
    for i, (function, symbol) in enumerate((("value_+", "up"), ("value_-", "down"))):
        size = 60
        page.button(function, 594, top + (height + 4) * i, parts.key(page.skin, 202, height),
                    tab + i, image=(parts.icon_picture(page.skin, symbol, size, "accent"), 71,
                                    (height - size) // 2))


def troublecodes(skin):
    c = skin.colors
    page = parts.page(skin, "troublecodes", "Trouble codes", command="obd_gettroublecodes")
    list_page(page, "troublecodes", 0, 240, 17, 0, UnreadText="word_Not read yet",
              EmptyText="word_No Errors")
    # The whole text of the selected code, of which a row may hold only a part.
    page.image(parts.panel(skin, 586, 75), 4, 244)
    page.label("obd_code", 16, 274, 564, 17, "text", ON_PANEL, lines=2)
    dark = (draw.box(0, 0, 202, 101, c["panel"], c["edge"], 8, 1.5)
            + icon("engine", 14, 18, 68, c["off"]))
    page.image(skin.picture("lamp-wide", 202, 101, dark), 594, 4)
    page.image(skin.picture("lamp-lit68", 76, 76, icon("engine", 4, 4, 68, c["warn"], stroke=3.8)),
               604, 18, "obd_lamp")
    code_count(page, 696, 25)
    step_keys(page, 109, 103, 1)
    keys = [("obd_gettroublecodes", "read", "Read", "obd_connected"),
            ("obd_cleartroublecodes", "clear", "Clear", "obd_connected"),
            ("openmenu_freezeframe", "freeze", "Freeze frame", "obd_codes")]
    for i, (function, symbol, caption, enabled) in enumerate(keys):
        parts.icon_key(page, function, THIRDS[i], 324, THIRD, 75, symbol, caption, 3 + i,
                       points=16, size=36, enabled=enabled)


def freezeframe(skin):
    page = parts.page(skin, "freezeframe", "Freeze frame", ("status", "navigationback"))
    names = ["rpm.engine", "speed", "value.loadcalculated", "temp.enginecoolant", "temp.intake",
             "value.throttle", "value.shorttermfueltrimbank1", "value.longtermfueltrimbank1",
             "value.airflowrate", "p.intakemanifold", "p.fuelrail", "angle.ignitiontiming"]
    for i, name in enumerate(names):
        x, y = THIRDS[i % 3], 4 + 99 * (i // 3)
        page.image(parts.panel(skin, THIRD, 95), x, y)
        page.label("sensorcaption_" + name, x + 12, y + 28, 230, 14, "muted", ON_PANEL)
        parts.figure(page, name, x + 8, y + 80, 181, 32, 60)


def sensor_pages(skin):
    """All sensors, thirteen to a page, and the keys for all on and all off."""
    lit = skin.picture("switch-on", *parts.SWITCH, parts.switch_picture(skin, True))
    names = [row.function for row in sensors.SENSORS]
    if len(names) > 7 * 13:
        skin.fault("the sensor pages have no room for all sensors")
    for number_ in range(7):
        name = "sensors" + (str(number_ + 1) if number_ else "")
        page = parts.page(skin, name, f"Sensors {number_ + 1} of 7")
        width, height = THIRD, 75
        for i, sensor in enumerate(names[13 * number_:13 * number_ + 13]):
            page.button("sensortoggle_" + sensor, THIRDS[i % 3], ROWS[i // 3],
                        parts.key(skin, width, height, "switch"), i,
                        image=(lit, width - parts.SWITCH[0] - 10, (height - parts.SWITCH[1]) // 2),
                        state="sensoron_" + sensor,
                        label=("=sensorcaption_" + sensor, 10, 44, 180, 14, "text", parts.ON_KEY,
                               0))
        for i, (function, caption) in enumerate((
                ("sensoron_all", "All on"),
                ("openbox_alloff", "All off"))):
            page.button(function, THIRDS[1 + i], ROWS[4], parts.key(skin, width, height), 13 + i,
                        label=(caption, 4, 45, width - 8, 16, "text", parts.ON_KEY, 2))


def all_off(skin):
    """Asks before all sensors are off; a mark tells that they are."""
    c = skin.colors
    box = Section(skin, "alloff", [("BackgroundX", 0), ("BackgroundY", 0)])
    left, top, width, height = 110, 90, 580, 210
    shapes = (f'<rect width="800" height="480" fill="{c["veil"]}" fill-opacity="0.62"/>'
              + draw.box(left, top, width, height, c["panel"], c["accent"], 12, 2)
              + icon("query", left + 24, top + 26, 56, c["accent"]))
    box.image(skin.picture("alloff", 800, 480, shapes), 0, 0)
    box.label("word_Switch all sensors off?", left + 98, top + 62, 470, 18, "text", ON_PANEL)
    done = parts.icon_picture(skin, "yes", 36, "accent")
    box.button("sensoroff_all", left + 20, top + 106, parts.key(skin, 266, 84), 0,
               image=(done, 18, 24), state="sensoroff_rpm.engine",
               label=("All off", 64, 51, 198, 18, "text", parts.ON_KEY, 0))
    parts.icon_key(box, "closebox", left + 294, top + 106, 266, 84, "no", "Close", 1, 18, 36)


def mediaplayer(skin):
    c = skin.colors
    page = parts.page(skin, "mediaplayer", "Media")
    list_pictures(skin)
    list_page(page, "media", 34, 319, 17, 0)
    page.label("currentfolder", 16, 32, 400, 14, "muted", ON_PANEL)
    page.label("indexlabel", 420, 32, 158, 18, "text", ON_PANEL, 1)
    size = 44
    page.button("gofolder_parent", 594, 4, parts.key(skin, 202, 101), 1,
                image=(parts.icon_picture(skin, "parent", size, "accent"), 14, 28),
                label=("Folder up", 70, 58, 120, 16, "text", parts.ON_KEY, 0))
    step_keys(page, 109, 103, 2)

    # The panel lies beneath the slider, so that a frame around it can show the selection.
    page.image(parts.panel(skin, 586, 75), 4, 324)
    page.image(parts.frame(skin, 586, 75), 4, 324, "mouseover_slider_slider0")
    track = draw.box(0, 0, 578, 67, c["panel"], None, 6)
    for name, fill in (("track", "empty"), ("track-full", "accent")):
        skin.picture(name, 578, 67, track + draw.box(10, 27, 558, 13, c[fill], None, 6))
    for name, fill, edge in (("knob", c["key"], c["keyedge"]), ("knob-over", c["focus"], c["accent"]),
                             ("knob-down", c["down"], c["accent"])):
        skin.picture(name, 80, 67, draw.box(2, 1, 76, 65, fill, edge, 10, 2.5)
                     + f'<path d="M32 22 V45 M40 22 V45 M48 22 V45" stroke="{c["muted"]}"'
                     ' stroke-width="3" stroke-linecap="round"/>')
    page.add("Slider", "listview", X=8, Y=328, Direction=1, Tabindex=4, Background="track.png",
             Progress="track-full.png", Bar="knob.png", BarOver="knob-over.png",
             BarDown="knob-down.png")
    page.image(parts.panel(skin, 202, 75), 594, 324)
    for i, line in enumerate(("Touch an entry twice", "to open it")):
        page.label("word_" + line, 598, 356 + 25 * i, 194, 14, "text", ON_PANEL, 2)


def system(skin):
    page = parts.page(skin, "system", "System")
    keys = [("obd_connect", "connect", "Connect"),
            ("obd_disconnect", "disconnect", "Disconnect", "obd_active"),
            ("openmenu_find", "find", "Find"), ("config", "settings", "Settings"),
            ("openmenu_sensors", "sensors", "Sensors"), parts.other_look(skin),
            ("openmenu_language", "language", "Language"),
            ("keyboard", "keyboard", "Keyboard", "obd_keyboard"),
            ("minimize", "minimise", "Minimise"),
            ("showquery_End the program?:quit", "end", "End")]
    for i, (function, symbol, caption, *enabled) in enumerate(keys):
        parts.tall_key(page, function, 4 + 159 * (i % 5), 4 + 108 * (i // 5), 156, 103, symbol,
                       caption, i, points=16, size=44, enabled=enabled[0] if enabled else None)
    page.image(parts.panel(skin, 792, 179), 4, 220)
    rows = [("Program", "text"), ("Interface", "obd_interface"), ("Protocol", "obd_protocol"),
            ("Status", "word_obd_status")]
    for i, (caption, function) in enumerate(rows):
        baseline = 247 + 31 * i
        page.label("word_" + caption, 22, baseline, 150, 15, "muted", ON_PANEL)
        page.label(function, 190, baseline, 590, 17, "text", ON_PANEL,
                   caption="APP_Title" if function == "text" else "")
    page.label("obd_reason", 190, 368, 590, 16, "text", ON_PANEL, lines=2)


def shortcuts(skin):
    c = skin.colors
    box = Section(skin, "shortcuts", [("BackgroundX", 0), ("BackgroundY", 0)])
    left, top, width, height = 6, 6, 788, 394
    shapes = (f'<rect width="800" height="480" fill="{c["veil"]}" fill-opacity="0.62"/>'
              + draw.box(left, top, width, height, c["panel"], c["accent"], 12, 2))
    box.image(skin.picture("shortcuts", 800, 480, shapes), 0, 0)
    box.label("word_Shortcuts", left + 18, top + 30, 400, 16, "muted", ON_PANEL)
    keys = [("openmenu_dashboard", "dashboard", "Dashboard"), ("openmenu_panel", "panel", "My panel"),
            ("openmenu_engine", "engine", "Engine"), ("openmenu_chart", "chart", "Chart"),
            ("openmenu_troublecodes", "codes", "Trouble codes"),
            ("openmenu_previous", "back", "Last page"), ("obd_connect", "connect", "Connect"),
            ("obd_disconnect", "disconnect", "Disconnect", "obd_active"), parts.other_look(skin),
            ("openmenu_language", "language", "Language"),
            ("keyboard", "keyboard", "Keyboard", "obd_keyboard"), ("closebox", "no", "Close")]
    for i, (function, symbol, caption, *enabled) in enumerate(keys):
        parts.tall_key(box, function, left + 14 + 191 * (i % 4), top + 42 + 116 * (i // 4), 187, 112,
                       symbol, caption, i, points=16, size=44, enabled=enabled[0] if enabled else None)


def messages(skin):
    c = skin.colors
    for name, symbol, color, answers in (("warning", "warning", "warn", {"ok": "OK"}),
                                         ("info", "info", "accent", {"ok": "OK"}),
                                         ("query", "query", "accent", {"yes": "Yes", "no": "No"})):
        width, height = 580, 280
        skin.picture("box-" + name, width, height,
                     draw.box(0, 0, width, height, c["panel"], c[color], 14, 3)
                     + icon(symbol, 26, 30, 64, c[color]))
        box = Section(skin, name, [("Background", f"box-{name}.png"), ("Dim", 50)])
        box.check_text("message", [], 440, 16, PLAIN, "text", ON_PANEL, False)
        box.lines += ["Label0Function=word_message", "Label0X=116", "Label0Y=47", "Label0Width=440",
                      "Label0Height=135", f"Label0Font={PLAIN}", "Label0FontSize=16",
                      "Label0Alignment=0", f"Label0Color={number(c['text'])}"]
        for i, (answer, caption) in enumerate(answers.items()):
            x = (width - 210) // 2 if len(answers) == 1 else 70 + 230 * i
            box.button(answer, x, 186, parts.key(skin, 210, 76, answer), None,
                       label=(caption, 74, 46, 130, 18, "text", parts.ON_KEY, 0))


def all_pages(skin):
    general(skin)
    parts.status(skin)
    parts.navigation(skin)
    for build in (mainmenu, dashboard, engine, trims, oxygen, chart, troublecodes, freezeframe,
                  sensor_pages, value, panel, choices, mediaplayer, system, find, language, welcome,
                  shortcuts, all_off, messages):
        build(skin)


def startup(c):
    """The start-up picture."""
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="800" height="480">'
            f'<rect width="800" height="480" fill="{c["back1"]}"/>' + mark(300, 90, 200, c)
            + draw.text(400, 375, "Dravik", 64, c["text"], "middle") + "</svg>")
