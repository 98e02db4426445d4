"""The pages and boxes for portrait screens. They have the names of those in pages.py, so that a page
stays open when the skin changes."""

import draw
import pages
import portrait_parts as parts
import sensors
import welcome
from icons import icon
from palette import number
from parts import SWITCH, needle, switch_picture
from portrait_parts import (BOTTOM, COLUMNS, FULL, HALF, LEFT, ON_BACK, ON_KEY, ON_PANEL, RIGHT, THIRD,
                            THIRDS, TOP, PortraitSection, grid, panel, picture_key)
from skin import NARROW, Section

NIGHT, DAY = "portrait", "portrait-day"

MENUS = ["mainmenu", "dashboard", "panel", "engine", "trims", "oxygen", "chart",
         "troublecodes", "sensors", "sensors2", "sensors3", "sensors4", "sensors5", "sensors6", "sensors7",
         "mediaplayer", "system"]

NAMES = [row.function for row in sensors.SENSORS]
# Sensors on each of the pages of keys.
EACH = (14, 14, 14, 12, 12, 12, 12)


def general(skin):
    look = [("Look", "day")] if skin.name == DAY else []
    Section(skin, "General", [("Width", parts.WIDTH), ("Height", parts.HEIGHT),
                              ("Imagefolder", skin.name)] + look
            + [(f"Menu{i}", name) for i, name in enumerate(MENUS)])
    if len(NAMES) > sum(EACH):
        skin.fault("the pages of sensors have no room for all")


def other_look(skin):
    """Command, icon and caption of the key that shows the skin that is light where this is dark."""
    if skin.name == DAY:
        return f"skin_{NIGHT}", "night", "Night"
    return f"skin_{DAY}", "day", "Day"


def mainmenu(skin):
    c = skin.colors
    page = parts.page(skin, "mainmenu", "word_Main menu")
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


def big_dial(page, name, x, y, dial, tab, remark=""):
    skin = page.skin
    more = draw.text(RADIUS, RADIUS - 32, remark, 19, skin.colors["muted"], "middle", False, True)
    parts.dial(page, "dial-" + name.partition(".")[0], x, y, RADIUS, 18, dial, more, "known_" + name)
    needle(page, "sensor_" + name, x, y, *dial["range"], *dial["sweep"], 23, 72)
    on = ("face0", "face1")
    page.label("live_" + name, x - 68, y + 62, 136, 27, "text", on, 2)
    page.label("sensorcaption_" + name, x - 88, y + 87, 176, 15, "muted", on, 2)
    page.label("sensorunit_" + name, x - 45, y + 109, 90, 15, "muted", on, 2)
    page.button("openvalue_" + name, x - RADIUS, y - RADIUS, parts.glass(skin, 258, 258), tab)


COOLANT = ("bar-coolant", "obd_05", 40, 130, [(108, 116, "warn"), (116, 130, "danger")], (80, 170))


def dashboard(skin):
    c = skin.colors
    page = parts.page(skin, "dashboard", "word_Dashboard")
    big_dial(page, "rpm.engine", 4 + RADIUS, TOP + RADIUS, RPM, 0, "× 1000")
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
    caption = 26 if tab is not None else 0
    top = y + caption + (height - caption - 60) // 2
    dark = (draw.box(0, 0, width, height, c["panel"], c["edge"], 8, 1.5)
            + icon("engine", 10, top - y, 60, c["off"]))
    page.image(skin.picture(f"lamp-tile{width}", width, height, dark), x, y)
    page.image(skin.picture("lamp-lit", 68, 68, icon("engine", 4, 4, 60, c["warn"], stroke=3.8)),
               x + 6, top - 4, "obd_lamp")
    # The number has the colour of the panel: only the plate beneath, which is there while there are
    # codes, lets it be seen. Before they are read there is no number.
    plate = skin.picture("count", 68, 54, draw.box(0, 0, 68, 54, c["accent"], radius=10))
    page.image(plate, x + width - 74, top + 3, "obd_codes")
    page.label("obd_troublecodescount", x + width - 72, top + 40, 64, 24, "panel", ("accent",), 2)
    if tab is not None:
        page.button("openmenu_troublecodes", x, y, parts.glass(skin, width, height), tab,
                    label=("Trouble codes", 12, 27, width - 16, 15, "muted", ON_PANEL, 0))


def engine(skin):
    page = parts.page(skin, "engine", "word_Engine")
    names = ["rpm.engine", "speed", "value.loadcalculated", "value.throttle",
             "temp.enginecoolant", "temp.intake", "temp.ambient", "volt.obdcontrolmodule",
             "value.airflowrate", "p.intakemanifold", "p.barometric", "angle.ignitiontiming",
             "value.fuellevel", "p.fuelrail", "p.fuelraildirect", "time.enginestart"]
    for i, ((x, y), name) in enumerate(zip(grid(16, TOP, 77), names)):
        parts.tile(page, name, x, y, HALF, 77, i, 26)


TRIM = dict(range=(-25, 25), sweep=(60, 300), outer=79, major=13, minor=8, step=5,
            between=5, numbers=(-20, -10, 10, 20), digits=20, thick=5,
            zones=[(-25, -10, "warn"), (-10, 10, "normal"), (10, 25, "warn")])


def trims(skin):
    page = parts.page(skin, "trims", "word_Mixture")
    names = ["value.shorttermfueltrimbank1", "value.longtermfueltrimbank1",
             "value.shorttermfueltrimbank2", "value.longtermfueltrimbank2"]
    height, radius = 208, 84
    on = ("face0", "face1")
    for i, ((x, y), name) in enumerate(zip(grid(4, TOP, height), names)):
        page.image(panel(skin, HALF, height), x, y)
        middle, centre = x + HALF // 2, y + 35 + radius
        parts.dial(page, "dial-trim", middle, centre, radius, 11, TRIM, lit="known_" + name)
        needle(page, "sensor_" + name, middle, centre, *TRIM["range"], *TRIM["sweep"], 15, 70, 6, 3)
        page.label("live_" + name, middle - 64, centre + 51, 128, 22, "text", on, 2)
        page.label("sensorunit_" + name, middle - 22, centre + 74, 44, 15, "muted", on, 2)
        page.button("openvalue_" + name, x, y, parts.glass(skin, HALF, height), i,
                    label=("=sensorcaption_" + name, 12, 27, HALF - 16, 15, "muted", ON_PANEL, 0))
    # A bar counts in whole numbers, so it reads the raw value: 51200 is one volt.
    oxygen = [("volt.lambdabank1sensor1", "obd_14"), ("volt.lambdabank1sensor2", "obd_15"),
              ("volt.lambdabank2sensor1", "obd_18"), ("volt.lambdabank2sensor2", "obd_19")]
    for i, ((x, y), (name, source)) in enumerate(zip(grid(4, 500, 109), oxygen)):
        parts.tile(page, name, x, y, HALF, 109, 4 + i, 28,
                   ("bar-oxygen", source, 0, 1, [], (0, 51200)))


def oxygen(skin):
    """The oxygen sensors, one to a column: whatever of it the car's kind of sensors tells."""
    page = parts.page(skin, "oxygen", "word_Oxygen sensors")
    left, width, gap = 122, 86, 3
    row, between = 88, 34
    xs = [left + (width + gap) * i for i in range(4)]
    for x, place in zip(xs, pages.OXYGEN_PLACES):
        page.label("text", x, TOP + 24, width, 17, "text", ON_BACK, 2, caption="B%d S%d" % place)
    y, tab = TOP + 60, 0
    for k, (title, rows) in enumerate(pages.OXYGEN_ROWS):
        if k < 2:
            page.label("word_" + title, 12, y - 10, FULL - 16, 15, "text", ON_BACK)
        for caption, name, unit, places in rows:
            page.image(panel(skin, FULL, row - gap), LEFT, y)
            if unit:
                page.label("sensorunit_" + name % places[0], 12, y + 63, left - 16, 15, "muted", ON_PANEL)
            for i, (x, place) in enumerate(zip(xs, pages.OXYGEN_PLACES)):
                if place in places:
                    page.label("live_" + name % place, x, y + 51, width, 18, "text", ON_PANEL, 2)
                    more = 0 if i else left - LEFT
                    page.button("openvalue_" + name % place, x - more, y,
                                parts.glass(skin, width + more, row - gap), tab,
                                label=None if i else (caption, 8, 37 if unit else 49, left - 16, 15,
                                                      "muted", ON_PANEL, 0))
                    tab += 1
            y += row
        y += between if k == 0 else 12


def chart(skin):
    page = parts.page(skin, "chart", "word_Chart")
    names = ["rpm.engine", "speed", "value.loadcalculated", "value.throttle"]
    height = 138
    for i, name in enumerate(names):
        y = TOP + (height + 4) * i
        page.image(panel(skin, FULL, height), LEFT, y)
        page.label("sensorcaption_" + name, 16, y + 28, 200, 15, "muted", ON_PANEL)
        parts.figure(page, name, 230, y + 30, 242, 20, 62)
        parts.trace(page, "sensor_" + name, 9, y + 37, 462, height - 43)
    keys = [("pause_chartall", "pause", "Pause"), ("clr_chartall", "clear", "Clear"),
            ("snapshot_all", "snapshot", "Picture")]
    for i, (function, symbol, caption) in enumerate(keys):
        parts.tall_key(page, function, THIRDS[i], 646, THIRD, 76, symbol, caption, i, size=36)


def list_panel(page, function, top, height, head, tab, **keys):
    """A list in a panel, which has a frame while the list is selected; `head` pixels lie above it."""
    c = page.skin.colors
    page.image(panel(page.skin, FULL, height), LEFT, top)
    page.image(parts.frame(page.skin, FULL, height), LEFT, top, "mouseover_list")
    page.add("List", function, X=10, Y=top + 5 + head, Width=460, Height=height - 10 - head,
             Font=NARROW, FontSize=17, FontStyle="Regular", RowHeight=64,
             FontColor=number(c["text"]), BackColor=number(c["panel"]), Tabindex=tab, **keys)


def step_keys(page, xs, y, width, height, tab):
    """Keys that move the selection of the list."""
    for i, (function, symbol) in enumerate((("value_+", "up"), ("value_-", "down"))):
        picture_key(page, function, xs[i], y, width, height, symbol, tab + i, 48)


def troublecodes(skin):
    page = parts.page(skin, "troublecodes", "word_Trouble codes", command="obd_gettroublecodes")
    list_panel(page, "troublecodes", TOP, 330, 0, 0, UnreadText="word_Not read yet",
               EmptyText="word_No Errors")
    # The whole text of the selected code.
    page.image(panel(skin, FULL, 92), LEFT, 410)
    page.label("obd_code", 14, 434, 452, 16, "text", ON_PANEL, lines=3)
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
    page = parts.page(skin, "freezeframe", "word_Freeze frame", "navigationback")
    names = ["rpm.engine", "speed", "value.loadcalculated", "temp.enginecoolant", "temp.intake",
             "value.throttle", "value.shorttermfueltrimbank1", "value.longtermfueltrimbank1",
             "value.airflowrate", "p.intakemanifold", "p.fuelrail", "angle.ignitiontiming"]
    height = 104
    for (x, y), name in zip(grid(12, TOP, height), names):
        page.image(panel(skin, HALF, height), x, y)
        page.label("sensorcaption_" + name, x + 12, y + 30, HALF - 16, 15, "muted", ON_PANEL)
        parts.figure(page, name, x + 4, y + 84, HALF - 8, 30, 68)


def key_pages(skin, name, title, navigation):
    """Pages with a key for each sensor: of each its page, the places of the keys with the sensors, and
    the two places at the bottom."""
    for i, count in enumerate(EACH):
        page = parts.page(skin, name + (str(i + 1) if i else ""), title.format(i + 1), navigation)
        places = grid(16, TOP, 77)
        first = sum(EACH[:i])
        yield page, list(zip(places, NAMES[first:first + count])), places[-2:]


def sensor_pages(skin):
    """All sensors with their switches, and the keys for all on and all off."""
    width, height = HALF, 77
    x, y = width - SWITCH[0] - 12, height - SWITCH[1] - 7
    off = f'<g transform="translate({x} {y})">{switch_picture(skin, False)}</g>'
    on = skin.picture("switch-on", *SWITCH, switch_picture(skin, True))
    plain = parts.key(skin, width, height)
    for state in ("up", "over", "down"):
        plate = skin.pictures[f"{plain}-{state}"][2]
        skin.picture(f"switch-{state}", width, height, plate[plate.index(">") + 1:-len("</svg>")] + off)
    for page, keys, bottom in key_pages(skin, "sensors", "word_Sensors {} of 7", "navigation"):
        for i, (place, name) in enumerate(keys):
            page.button("sensortoggle_" + name, *place, "switch", i, image=(on, x, y),
                        state="sensoron_" + name,
                        label=("=sensorcaption_" + name, 12, 27, width - 18, 15, "text", ON_KEY, 0))
        for i, (function, caption) in enumerate((("sensoron_all", "All on"),
                                                 ("openbox_alloff", "All off"))):
            parts.plain_key(page, function, *bottom[i], width, height, caption, 20 + i)


def choose_pages(skin):
    """Every sensor as a key that puts it into a tile of the panel."""
    names = ["choose" + (str(i + 1) if i else "") for i in range(len(EACH))]
    steps = []
    for page, keys, bottom in key_pages(skin, "choose", "word_Choose a value", "navigationchoose"):
        for i, (place, name) in enumerate(keys):
            page.button("choose_" + name, *place, parts.key(skin, HALF, 77), i,
                        label=("=sensorcaption_" + name, 12, 46, HALF - 18, 16, "text", ON_KEY, 0))
        steps.append((page, bottom))
    for i, (page, bottom) in enumerate(steps):
        picture_key(page, "openmenu_" + names[i - 1], *bottom[0], HALF, 77, "previous", 20)
        picture_key(page, "openmenu_" + names[(i + 1) % len(EACH)], *bottom[1], HALF, 77, "next", 21)


def own_panel(skin):
    """Four values that the driver chooses."""
    page = parts.page(skin, "panel", "word_My panel")
    height, corner = 158, 76
    for i in range(4):
        name = f"panel{i + 1}"
        y = TOP + (height + 4) * i
        page.image(panel(skin, FULL, height), LEFT, y)
        parts.figure(page, name, 10, y + 130, 384, 50, 78, 18)
        page.button("openvalue_" + name, LEFT, y, parts.glass(skin, FULL - corner, height), 2 * i,
                    label=("=sensorcaption_" + name, 14, 36, FULL - corner - 20, 18, "muted",
                           ON_PANEL, 0))
        picture_key(page, f"panel_{i + 1}", LEFT + FULL - corner, y, corner, height, "settings",
                    2 * i + 1, 40)


def value(skin):
    """A sensor large."""
    page = parts.page(skin, "value", "sensorcaption_picked", "navigationprevious")
    page.image(panel(skin, FULL, 220), LEFT, TOP)
    parts.figure(page, "picked", 8, TOP + 142, 464, 62, 84, 20)
    for x, caption in ((LEFT, "Lowest"), (RIGHT, "Highest")):
        page.image(panel(skin, HALF, 112), x, 300)
        page.label("word_" + caption, x + 12, 330, HALF - 24, 15, "muted", ON_PANEL)
        page.label(caption.lower() + "_picked", x + 8, 390, HALF - 16, 34, "text", ON_PANEL, 2)
    page.image(panel(skin, FULL, 306), LEFT, 416)
    parts.trace(page, "sensor_picked", 9, 422, 462, 294)


def mediaplayer(skin):
    c = skin.colors
    page = parts.page(skin, "mediaplayer", "word_Media")
    pages.list_pictures(skin)
    list_panel(page, "media", TOP, 410, 36, 0)
    page.label("currentfolder", 14, TOP + 32, 452, 15, "muted", ON_PANEL)
    step_keys(page, THIRDS, 490, THIRD, 72, 1)
    page.image(panel(skin, THIRD, 72), THIRDS[2], 490)
    page.label("indexlabel", THIRDS[2] + 3, 535, 148, 18, "text", ON_PANEL, 2)

    # The panel lies beneath the slider, so that a frame around it can show the selection.
    page.image(panel(skin, FULL, 76), LEFT, 566)
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
    page = parts.page(skin, "system", "word_System")
    keys = [("obd_connect", "connect", "Connect"),
            ("obd_disconnect", "disconnect", "Disconnect", "obd_active"),
            ("openmenu_find", "find", "Find"), ("config", "settings", "Settings"),
            ("openmenu_language", "language", "Language"), other_look(skin),
            ("openmenu_sensors", "sensors", "Sensors"),
            ("keyboard", "keyboard", "Keyboard", "obd_keyboard"),
            ("minimize", "minimise", "Minimise"),
            ("showquery_End the program?:quit", "end", "End")]
    for i, ((x, y), (function, symbol, caption, *enabled)) in enumerate(zip(grid(10, TOP, 72), keys)):
        parts.icon_key(page, function, x, y, HALF, 72, symbol, caption, i, 17,
                       enabled=enabled[0] if enabled else None)
    top = 456
    page.image(panel(skin, FULL, 722 - top), LEFT, top)
    rows = [("Program", "text", 1), ("Protocol", "obd_protocol", 1), ("Interface", "obd_interface", 2),
            ("Status", "word_obd_status", 1)]
    baseline = top + 36
    for caption, function, lines in rows:
        page.label("word_" + caption, 12, baseline, 108, 15, "muted", ON_PANEL)
        page.label(function, 126, baseline, 346, 15, "text", ON_PANEL, lines=lines,
                   caption="APP_Title" if function == "text" else "")
        baseline += 13 + 23 * lines
    page.label("obd_reason", 126, baseline - 6, 346, 15, "text", ON_PANEL, lines=3)


def language_keys(page, top, height):
    for i, (name, files) in enumerate(welcome.LANGUAGES):
        parts.choice_key(page, "language_" + files[0], LEFT, top + (height + 6) * i, FULL, height,
                         "'" + name, i, ["language_" + file for file in files], 22)


def unit_and_look_keys(page, top, height):
    page.label("word_Units", 16, top, 440, 18, "muted", ON_BACK)
    for i, (function, caption) in enumerate((("units_metric", "Metric"), ("units_imperial", "Imperial"))):
        parts.choice_key(page, function, COLUMNS[i], top + 14, HALF, height, caption, 10 + i, [function])
    below = top + height + 52
    page.label("word_Day or night", 16, below, 440, 18, "muted", ON_BACK)
    for i, (name, caption) in enumerate(((DAY, "Day"), (NIGHT, "Night"))):
        parts.choice_key(page, "skin_" + name, COLUMNS[i], below + 14, HALF, height, caption, 20 + i,
                         ["picture"] if page.skin.name == name else [])


def find_part(page, top, bottom, other):
    """Looking for the interface: what to do, keys, how it goes, and what is wrong."""
    page.label("word_Plug in the interface and switch the ignition on.", 16, top + 26, 448, 18, "text",
               ON_BACK, lines=2)
    parts.icon_key(page, "obd_find", LEFT, top + 70, FULL, 96, "find", "Find the interface", 0, 20, 52)
    keys = [("obd_find", "no", "Cancel", "obd_finding"), (*other, None)]
    for i, (function, symbol, caption, enabled) in enumerate(keys):
        parts.icon_key(page, function, COLUMNS[i], top + 170, HALF, 84, symbol, caption, 1 + i, 16, 40,
                       enabled)
    page.image(panel(page.skin, FULL, bottom - top - 258), LEFT, top + 258)
    page.label("word_obd_status", 18, top + 290, 446, 16, "text", ON_PANEL)
    page.label("obd_reason", 18, top + 320, 446, 16, "muted", ON_PANEL, lines=3)
    page.label("obd_finding", 18, top + 406, 446, 16, "text", ON_PANEL, lines=6)


def find(skin):
    page = parts.page(skin, "find", "word_Find", "navigationprevious")
    find_part(page, TOP + 2, BOTTOM, ("config", "settings", "Settings"))


def language(skin):
    page = parts.page(skin, "language", "word_Language", "navigationprevious")
    language_keys(page, TOP, 64)
    parts.icon_key(page, "openmenu_welcome", LEFT, TOP + 350, FULL, 64, "demo", "Welcome", 9, 20)
    unit_and_look_keys(page, 520, 66)


def welcome_pages(skin):
    """What a new user is led through; these have neither the strip nor the keys of other pages."""
    names = ["welcome", "welcome2", "welcome3"]
    made = []
    for i, name in enumerate(names):
        page = PortraitSection(skin, name, [("CommonObjects0", "backdrop")])
        made.append(page)
        page.image(skin.picture("mark", 64, 64, pages.mark(0, 0, 64, skin.colors)), 20, 20)
        page.label("word_Welcome", 100, 50, 370, 24, "text", ON_BACK)
        page.label(f"word_Step {i + 1} of 3", 100, 84, 370, 16, "muted", ON_BACK)
        keys = [("openmenu_" + names[i - 1], "back", "Back")] if i else []
        keys += [("welcomedone", "no", "Skip")]
        keys += [("openmenu_" + names[i + 1], "next", "Next") if i < 2 else ("welcomedone", "yes", "Done")]
        for (function, symbol, caption), x in zip(keys, THIRDS[3 - len(keys):]):
            parts.tall_key(page, function, x, 706, THIRD, 88, symbol, caption, 90, 16, 36)
    language_keys(made[0], 130, 104)
    find_part(made[1], 120, 694, ("demo", "demo", "Try the demo"))
    unit_and_look_keys(made[2], 160, 190)


def veiled(skin, name, top, height):
    """A box over the whole page: a panel at the bottom, and the rest of the page beneath a veil."""
    c = skin.colors
    box = PortraitSection(skin, name, [("BackgroundX", 0), ("BackgroundY", 0)])
    shapes = (f'<rect width="480" height="800" fill="{c["veil"]}" fill-opacity="0.62"/>'
              + draw.box(LEFT, top, FULL, height, c["panel"], c["accent"], 12, 2))
    box.image(skin.picture(name, 480, 800, shapes), 0, 0)
    return box


def shortcuts(skin):
    top = 230
    box = veiled(skin, "shortcuts", top, 486)
    box.label("word_Shortcuts", 20, top + 36, 440, 18, "muted", ON_PANEL)
    keys = [("openmenu_dashboard", "dashboard", "Dashboard"), ("openmenu_panel", "panel", "My panel"),
            ("openmenu_engine", "engine", "Engine"), ("openmenu_chart", "chart", "Chart"),
            ("openmenu_troublecodes", "codes", "Codes"), ("openmenu_previous", "back", "Last page"),
            ("obd_connect", "connect", "Connect"),
            ("obd_disconnect", "disconnect", "Disconnect", "obd_active"),
            other_look(skin), ("openmenu_language", "language", "Language"),
            ("keyboard", "keyboard", "Keyboard", "obd_keyboard"), ("closebox", "no", "Close")]
    for i, (function, symbol, caption, *enabled) in enumerate(keys):
        parts.tall_key(box, function, 10 + 154 * (i % 3), top + 52 + 107 * (i // 3), 152, 104, symbol,
                       caption, i, enabled=enabled[0] if enabled else None)


def all_off(skin):
    """Asks before all sensors are off; a mark tells that they are."""
    top = 470
    box = veiled(skin, "alloff", top, 246)
    box.image(skin.picture("query", 56, 56, icon("query", 0, 0, 56, skin.colors["accent"])), 22, top + 22)
    box.label("word_Switch all sensors off?", 92, top + 48, 376, 18, "text", ON_PANEL, lines=2)
    done = parts.icon_picture(skin, "yes", 40, "accent")
    box.button("sensoroff_all", 14, top + 98, parts.key(skin, 224, 134), 0, image=(done, 92, 14),
               state="sensoroff_rpm.engine", label=("All off", 3, 96, 218, 18, "text", ON_KEY, 2))
    parts.tall_key(box, "closebox", 242, top + 98, 224, 134, "no", "Close", 1, 18, 48)


def messages(skin):
    c = skin.colors
    for name, symbol, color, answers in (("warning", "warning", "warn", ["OK"]),
                                         ("info", "info", "accent", ["OK"]),
                                         ("query", "query", "accent", ["Yes", "No"])):
        width, height = 456, 320
        skin.picture("box-" + name, width, height,
                     draw.box(0, 0, width, height, c["panel"], c[color], 14, 3)
                     + icon(symbol, 22, 26, 60, c[color]))
        box = PortraitSection(skin, name, [("Background", f"box-{name}.png"), ("Dim", 50)])
        box.check_text("message", [], 340, 17, NARROW, "text", ON_PANEL, False)
        box.lines += ["Label0Function=word_message", "Label0X=98", "Label0Y=26", "Label0Width=340",
                      "Label0Height=182", f"Label0Font={NARROW}", "Label0FontSize=17",
                      "Label0Alignment=0", f"Label0Color={number(c['text'])}"]
        for i, answer in enumerate(answers):
            x = (width - 204) // 2 if len(answers) == 1 else 18 + 216 * i
            parts.plain_key(box, answer.lower(), x, 218, 204, 84, answer, None, 20)


def all_pages(skin):
    general(skin)
    parts.shared_sections(skin)
    for build in (mainmenu, dashboard, engine, trims, oxygen, chart, troublecodes, freezeframe, sensor_pages,
                  own_panel, choose_pages, value, mediaplayer, system, find, language, welcome_pages,
                  shortcuts, all_off, messages):
        build(skin)
