"""The fixed texts of the panel: the section Words of the language files, from tables/words-panel.txt.

The English text comes first and is the name by which skins and the program ask for the others.
"""

import re

import codes

LONGEST_TEXT = 255  # bytes that the program reads of a value


def unbroken(text):
    """French sets a blank before these marks, at which no line must end."""
    return re.sub(" (?=[?!:;])", "\u00a0", text)


def faults(texts, seen):
    """What is wrong with one line of the table."""
    name = texts[0]
    if len(texts) != codes.COLUMNS or "" in texts:
        yield "%d of %d texts" % (len([text for text in texts if text]), codes.COLUMNS)
    if name.lower() in seen:
        yield "comes twice"
    if "=" in name or name.startswith((";", "[")):
        yield "an ini file cannot hold this name"
    for text in texts:
        if len(text.encode("utf-8")) > LONGEST_TEXT:
            yield "%d bytes: %s" % (len(text.encode("utf-8")), text)
        if text.count("%1") != name.count("%1") or text.count("%2") != name.count("%2"):
            yield "other values than in English: " + text


def words():
    """The texts of every line, English first. All faults of the table are told together."""
    found, seen, told = [], set(), []
    for place, line in codes.rows("words-panel.txt"):
        texts = tuple(unbroken(text.strip()) for text in line.split("|"))
        told += ["%s: %s: %s" % (place, texts[0], fault) for fault in faults(texts, seen)]
        seen.add(texts[0].lower())
        found.append(texts)
    if told:
        raise codes.TableError("\n".join(told))
    return found
