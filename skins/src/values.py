"""The pages that show sensors of the driver's own choice: one large, four, and all to choose from."""

import draw
import parts
import sensors
from palette import number
from parts import COLUMNS, ON_PANEL, ROWS
from skin import LEAST_TEXT, NARROW


def value(skin):
    """A sensor large, with what it went through."""
    c = skin.colors
    page = parts.page(skin, "value", "Value", ("status", "navigationprevious"))
    page.image(parts.panel(skin, 792, 166), 4, 4)
    page.label("sensorcaption_picked", 22, 38, 500, 20, "muted", ON_PANEL)
    page.label("live_picked", 22, 142, 500, 68, "text", ON_PANEL, 1)
    page.label("sensorunit_picked", 536, 142, 120, 24, "muted", ON_PANEL)
    for i, (caption, function) in enumerate((("Highest", "highest"), ("Lowest", "lowest"))):
        y = 34 + 76 * i
        page.label("word_" + caption, 646, y, 138, 14, "muted", ON_PANEL, 1)
        page.label(function + "_picked", 634, y + 38, 150, 24, "text", ON_PANEL, 1)
    page.image(parts.panel(skin, 792, 225), 4, 174)
    skin.picture("chart-wide", 784, 217, draw.box(0, 0, 784, 217, c["face1"], radius=5))
    page.add("Chart", "sensor_picked", X=8, Y=178, Time=60, Mode=0, Color=number(c["accent"]),
             GridColor=number(c["grid"]), Background="chart-wide.png",
             Font=NARROW, FontSize=LEAST_TEXT, Known=1)


def panel(skin):
    """Four sensors of the driver's choice. A touch shows one large; the key in the corner of its tile
    chooses another."""
    page = parts.page(skin, "panel", "My panel")
    width, height = 394, 195
    size = 36
    for i in range(4):
        x, y = 4 + 398 * (i % 2), 4 + 200 * (i // 2)
        name = f"panel{i + 1}"
        page.image(parts.panel(skin, width, height), x, y)
        page.button("openvalue_" + name, x, y, parts.glass(skin, width, height), 2 * i,
                    label=("=sensorcaption_" + name, 16, 42, 300, 18, "muted", ON_PANEL, 0))
        page.label("live_" + name, x + 8, y + 156, 300, 52, "text", ON_PANEL, 1)
        page.label("sensorunit_" + name, x + 316, y + 156, 74, 16, "muted", ON_PANEL)
    for i in range(4):
        x, y = 4 + 398 * (i % 2), 4 + 200 * (i // 2)
        page.button(f"panel_{i + 1}", x + width - 70, y + 6, parts.key(skin, 64, 64), 2 * i + 1,
                    image=(parts.icon_picture(skin, "settings", size, "accent"), 14, 14),
                    over=f"openvalue_panel{i + 1}")


def choices(skin):
    """All sensors, for a tile of that page."""
    names = [row.function for row in sensors.SENSORS]
    each = 20
    count = -(-len(names) // each)
    titles = ["choose" + (str(i + 1) if i else "") for i in range(count)]
    for i, title in enumerate(titles):
        page = parts.page(skin, title, "Choose a value", ("status",))
        for k, name in enumerate(names[each * i:each * (i + 1)]):
            page.button("choose_" + name, COLUMNS[k % 4], ROWS[k // 4], parts.key(skin, *parts.TILE),
                        k, label=("=sensorcaption_" + name, 8, 44, 180, 14, "text", parts.ON_KEY, 0))
        parts.navigation_key(page, "openmenu_panel", 0, "back")
        if i > 0:
            parts.navigation_key(page, "openmenu_" + titles[i - 1], 1, "previous")
        if i + 1 < count:
            parts.navigation_key(page, "openmenu_" + titles[i + 1], 2, "next")
