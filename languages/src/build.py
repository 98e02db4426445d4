#!/usr/bin/env python3
"""Makes the language, sensor and code description files of the languages folder.

    build.py            writes the files and the table of their coverage in docs/languages.md
    build.py --check    changes nothing; says what would change and ends with status 1 if anything

The output is committed: a build of the program needs no Python. Running this again without a
change to the tables gives the same bytes.
"""

import pathlib
import re
import sys

import codes
import panel
import sensors

FOLDER = pathlib.Path(__file__).resolve().parent.parent
METRIC, IMPERIAL = 0, 1
GUIDE = FOLDER.parent / "docs" / "languages.md"

# Language file, the system's locales that it suits, column of the translation tables, sensor files
# in metric and imperial units, which of them it begins with, description file.
LANGUAGES = [
    ("English", "en", 0, "english-metric.sensors", "english-imperial.sensors", METRIC, "english.codes"),
    ("English (miles)", "en_US,en_GB", 0, "english-metric.sensors", "english-imperial.sensors", IMPERIAL,
     "english.codes"),
    ("German", "de", 1, "german.sensors", "german-imperial.sensors", METRIC, "german.codes"),
    ("French", "fr", 2, "french.sensors", "french-imperial.sensors", METRIC, "french.codes"),
    ("Spanish", "es", 3, "spanish.sensors", "spanish-imperial.sensors", METRIC, "spanish.codes"),
    ("Italian", "it", 4, "italian.sensors", "italian-imperial.sensors", METRIC, "italian.codes"),
]

# What the coverage counts: a heading and the codes that belong under it.
GROUPS = [
    ("P0000-P0999", r"P0\d\d\d"),
    ("P0, hexadecimal", r"P0(?!\d\d\d).*"),
    ("P2", r"P2.*"),
    ("P34", r"P34.*"),
    ("B0", r"B0.*"),
    ("C0", r"C0.*"),
    ("U0", r"U0.*"),
    ("all", r".*"),
]


def language_file(locales, sensor_files, units, code_file, words, column):
    head = ("[General]\nLocales=%s\n\n[Sensors]\nFilename=%s\nMetric=%s\nImperial=%s\n\n"
            "[DTC]\nFilename=%s\n\n[Words]\n" % (locales, sensor_files[units], *sensor_files, code_file))
    return head + "".join("%s=%s\n" % (texts[0], texts[column]) for texts in words)


def coverage(files):
    """The table of the guide, counted from the texts of the files themselves."""
    names = ["Language file", "Sensors"] + [heading for heading, _ in GROUPS]
    lines = ["| " + " | ".join(names) + " |", "|---" + "|---:" * (len(names) - 1) + "|"]
    for name, _, _, metric, _, _, code_file in LANGUAGES:
        sensor_count = len(re.findall(r"^Sensor\d+Source=", files[metric], re.M))
        keys = re.findall(r"^([PBCU][0-9A-F]{4})=.", files[code_file], re.M)
        counts = [sum(1 for key in keys if re.fullmatch(form, key)) for _, form in GROUPS]
        cells = ["`%s.ini`" % name] + [str(count) for count in [sensor_count] + counts]
        lines.append("| " + " | ".join(cells) + " |")
    return "\n".join(lines) + "\n"


def outputs():
    """The text of every file made, by path."""
    descriptions = codes.Tables().descriptions()
    words = panel.words()
    files = {}
    for name, locales, column, metric, imperial, units, code_file in LANGUAGES:
        files[name + ".ini"] = language_file(locales, (metric, imperial), units, code_file, words, column)
        files[metric] = sensors.sensor_file(column, name, sensors.METRIC)
        files[imperial] = sensors.sensor_file(column, name, sensors.IMPERIAL)
        files[code_file] = codes.code_file(descriptions, column)
    made = {FOLDER / name: text for name, text in files.items()}
    if GUIDE.exists():
        before, start, rest = GUIDE.read_text(encoding="utf-8").partition("<!-- coverage -->\n")
        _, end, after = rest.partition("<!-- end of coverage -->")
        made[GUIDE] = before + start + coverage(files) + end + after
    return made


def main():
    made = outputs()
    changed = [path for path, text in made.items()
               if not path.exists() or path.read_bytes() != text.encode("utf-8")]
    if "--check" in sys.argv[1:]:
        for path in changed:
            print("out of date:", path.relative_to(FOLDER.parent))
        sys.exit(1 if changed else 0)
    for path in changed:
        path.write_bytes(made[path].encode("utf-8"))


if __name__ == "__main__":
    try:
        main()
    except codes.TableError as error:
        sys.exit(str(error))
