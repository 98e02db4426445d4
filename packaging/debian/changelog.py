#!/usr/bin/env python3
"""Writes the changelog in the form that Debian's tools read, to standard output.

    changelog.py VERSION MAIL SECONDS    the version that is packed, its maintainer, its date

Each heading "## VERSION (DATE)" of CHANGELOG.md is an entry; the one "## Unreleased" counts as the
version that is packed."""

import datetime
import email.utils
import pathlib
import re
import sys
import textwrap

CHANGELOG = pathlib.Path(__file__).resolve().parents[2] / "CHANGELOG.md"


def changes(body):
    """The items of a section, each in one line."""
    items = re.split(r"^- ", body, flags=re.M)[1:]
    return [re.sub(r"\s+", " ", re.split(r"^#", item, flags=re.M)[0]).strip() for item in items]


def main():
    version, mail, seconds = sys.argv[1:]
    parts = re.split(r"^## (.*)$", CHANGELOG.read_text(encoding="utf-8"), flags=re.M)[1:]
    for heading, body in zip(parts[::2], parts[1::2]):
        name, _, date = heading.partition(" (")
        when = datetime.datetime.fromtimestamp(int(seconds), datetime.timezone.utc)
        if date and name != version:
            when = datetime.datetime.fromisoformat(date.rstrip(")") + "T12:00:00+00:00")
        print(f"dravik ({version if name == 'Unreleased' else name}) unstable; urgency=medium\n")
        for change in changes(body):
            print(textwrap.fill(change, 78, initial_indent="  * ", subsequent_indent="    "))
        print(f"\n -- The Dravik developers <{mail}>  {email.utils.format_datetime(when)}\n")


if __name__ == "__main__":
    main()
