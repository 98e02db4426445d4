#!/usr/bin/env python3
"""Makes the language, sensor and code description files of the languages folder.

The output is committed: a build of the program needs no Python. Running this again without a
change to the tables gives the same bytes.
"""

import pathlib

import sensors

FOLDER = pathlib.Path(__file__).resolve().parent.parent

# Language file, column of the translation tables, sensor file, units, description file.
LANGUAGES = [
    ("English", 0, "english-metric.sensors", sensors.METRIC, "english.codes"),
]


def language_file(sensor_file, code_file):
    return "[Sensors]\nFilename=%s\n\n[DTC]\nFilename=%s\n" % (sensor_file, code_file)


def outputs():
    """The text of every file of the folder, by file name."""
    files = {}
    for name, column, sensor_file, units, code_file in LANGUAGES:
        files[name + ".ini"] = language_file(sensor_file, code_file)
        files[sensor_file] = sensors.sensor_file(column, name, units)
    return files


def main():
    for name, text in outputs().items():
        (FOLDER / name).write_bytes(text.encode("utf-8"))


if __name__ == "__main__":
    main()
