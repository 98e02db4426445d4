"""The pages that set Dravik up by touch: language, interface, units, and day or night. A new user is
led through them, and the page "System" opens those that are of use later."""

import parts
from parts import ON_BACK, ON_PANEL, THIRD, THIRDS
from skin import Section

# Languages by what they call themselves, and the language files that speak them.
LANGUAGES = [("English", ("English", "English (miles)")), ("Deutsch", ("German",)),
             ("Français", ("French",)), ("Español", ("Spanish",)), ("Italiano", ("Italian",))]


def language_keys(page, top, height):
    for i, (name, files) in enumerate(LANGUAGES):
        parts.choice_key(page, "language_" + files[0], THIRDS[i % 3], top + (height + 6) * (i // 3),
                         THIRD, height, "'" + name, i, ["language_" + file for file in files], 20)


def unit_keys(page, x, y, width, height, tab):
    for i, (function, caption) in enumerate((("units_metric", "Metric"),
                                             ("units_imperial", "Imperial"))):
        parts.choice_key(page, function, x + (width + 6) * i, y, width, height, caption, tab + i,
                         [function])


def look_keys(page, x, y, width, height, tab):
    """Day and night; the skin itself is the one that is chosen."""
    for i, (name, caption) in enumerate((("day", "Day"), ("night", "Night"))):
        chosen = ["picture"] if page.skin.name == name else []
        parts.choice_key(page, "skin_" + name, x + (width + 6) * i, y, width, height, caption,
                         tab + i, chosen)


def find_part(page, top, tab, demo):
    """Looking for the interface: what to do, keys, and how it goes."""
    skin = page.skin
    keys = [("obd_find", "find", "Find", None), ("obd_find", "no", "Cancel", "obd_finding")]
    if demo:
        page.label("word_obd_status", 22, top + 312, 756, 17, "text", ON_PANEL)
        keys.append(("demo", "demo", "Try the demo", None))
    else:
        keys.append(("config", "settings", "Settings", None))
    for i, (function, symbol, caption, enabled) in enumerate(keys):
        parts.icon_key(page, function, THIRDS[i], top, THIRD, 100, symbol, caption, tab + i, 16,
                       44, enabled)
    page.image(parts.panel(skin, 792, 225), 4, top + 104)
    page.label("word_Plug in the interface and switch the ignition on.", 22, top + 138, 756, 17,
               "muted", ON_PANEL)
    page.label("obd_finding", 22, top + 176, 756, 17, "text", ON_PANEL, lines=4)


def find(skin):
    page = parts.page(skin, "find", "Find", ("status", "navigationprevious"))
    find_part(page, 4, 0, False)
    page.label("obd_reason", 22, 362, 756, 16, "text", ON_BACK, lines=2)


def language(skin):
    page = parts.page(skin, "language", "Language", ("status", "navigationprevious"))
    language_keys(page, 4, 110)
    parts.icon_key(page, "openmenu_welcome", THIRDS[2], 120, THIRD, 110, "demo", "Welcome", 9, 20, 44)
    page.label("word_Units", 16, 270, 380, 16, "muted", ON_BACK)
    unit_keys(page, 4, 284, 193, 110, 10)
    page.label("word_Day or night", 416, 270, 380, 16, "muted", ON_BACK)
    look_keys(page, 404, 284, 193, 110, 20)


def step(skin, number, name):
    """A page of the welcome: its head, and below the way back, out and on."""
    page = Section(skin, name)
    page.image("back", 0, 0)
    page.label("word_Welcome", 16, 48, 420, 26, "text", ON_BACK)
    page.label(f"word_Step {number} of 3", 440, 46, 344, 18, "muted", ON_BACK, 1)
    names = ["welcome", "welcome2", "welcome3"]
    if number > 1:
        parts.icon_key(page, "openmenu_" + names[number - 2], THIRDS[0], 408, THIRD, 68, "back", "Back",
                       90, 17)
    parts.icon_key(page, "welcomedone", THIRDS[1], 408, THIRD, 68, "no", "Skip", 91, 17)
    if number < 3:
        parts.icon_key(page, "openmenu_" + names[number], THIRDS[2], 408, THIRD, 68, "next", "Next",
                       92, 17)
    else:
        parts.icon_key(page, "welcomedone", THIRDS[2], 408, THIRD, 68, "yes", "Done", 92, 17)
    return page


def welcome(skin):
    page = step(skin, 1, "welcome")
    language_keys(page, 90, 140)
    page = step(skin, 2, "welcome2")
    find_part(page, 68, 0, True)
    page = step(skin, 3, "welcome3")
    page.label("word_Units", 16, 104, 600, 18, "muted", ON_BACK)
    unit_keys(page, 4, 118, 393, 110, 0)
    page.label("word_Day or night", 16, 266, 600, 18, "muted", ON_BACK)
    look_keys(page, 4, 280, 393, 110, 2)
