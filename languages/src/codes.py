"""The trouble codes: composed of a component and a fault, or written as a whole.

tables/components.txt names the components, tables/faults.txt what can be wrong with them and the
series of faults that come back, tables/words.txt the places, tables/codes-*.txt the codes.
"""

import pathlib
import re

TABLES = pathlib.Path(__file__).resolve().parent / "tables"
CODE_TABLES = [
    "codes-engine.txt",
    "codes-transmission.txt",
    "codes-extended.txt",
    "codes-body-chassis.txt",
    "codes-network.txt",
]
COLUMNS = 5
LONGEST_DESCRIPTION = 63


class TableError(Exception):
    """A line of a table that cannot be carried out, with the place where it stands."""


def rows(name):
    """The lines of a table that say something, with their place for messages."""
    lines = (TABLES / name).read_text(encoding="utf-8").split("\n")
    for number, line in enumerate(lines, 1):
        if line.strip() and not line.startswith("#"):
            yield "%s:%d" % (name, number), line


def translations(name):
    """A table of words: what stands in the first column gives a tuple of texts per language."""
    found = {}
    for place, line in rows(name):
        if line.startswith("@"):
            continue
        word, *texts = line.split("|")
        word = word.strip()
        if len(texts) != COLUMNS or word in found:
            raise TableError("%s: a word needs %d texts and may come once" % (place, COLUMNS))
        # One blank stands behind the bar; a second one belongs to the text.
        found[word] = tuple(text.rstrip()[1:] for text in texts)
    return found


def read_series():
    """The series of faults that have a name, by that name with its "@"."""
    found = {}
    for _, line in rows("faults.txt"):
        if line.startswith("@"):
            name, words = line.split("=")
            found[name.strip()] = words.split()
    return found


def following(code, steps):
    """The code so many steps further on: decimal, or hexadecimal when the code holds a letter."""
    if code[1:].isdigit():
        return code[0] + "%04d" % (int(code[1:]) + steps)
    return code[0] + "%04X" % (int(code[1:], 16) + steps)


class Tables:
    """All tables read once."""

    def __init__(self):
        self.components = translations("components.txt")
        self.faults = translations("faults.txt")
        self.words = translations("words.txt")
        self.series = read_series()
        self.used = set()

    def compose(self, component, fault):
        """The description of one component with one fault, as a tuple over the languages."""
        name, *arguments = component.split()
        self.used.update([name, fault])
        if name not in self.components or fault not in self.faults:
            raise TableError("unknown component or fault: %s, %s" % (name, fault))
        texts = []
        for column in range(COLUMNS):
            values = [self.words[a][column] if a in self.words else a for a in arguments]
            text = self.components[name][column].format(*values)
            texts.append(text + self.faults[fault][column])
        return tuple(texts)

    def expand(self, faults):
        """The faults that a list of words and series stands for."""
        for word in faults.split():
            yield from self.series.get(word, [word])

    def block(self, fields):
        """The descriptions that one line gives in turn, before counting."""
        if len(fields) == COLUMNS:
            return [tuple(fields)]
        components = [part.strip() for part in fields[0].split("/")]
        faults = [part.strip() for part in fields[1].split("/")]
        if len(components) != len(faults):
            raise TableError("as many components as lists of faults")
        return [self.compose(component, fault)
                for component, words in zip(components, faults)
                for fault in self.expand(words)]

    def descriptions(self):
        """All codes in order, each with its texts per language."""
        found = {}
        for table in CODE_TABLES:
            for place, line in rows(table):
                codes, *fields = [field.strip() for field in line.split("|")]
                try:
                    if len(fields) not in (2, COLUMNS):
                        raise TableError("a component with faults, or %d texts" % COLUMNS)
                    self.add(found, codes, self.block(fields))
                except TableError as error:
                    raise TableError("%s: %s" % (place, error)) from None
        unused = (set(self.components) | set(self.faults)) - self.used
        if unused:
            raise TableError("never used: " + " ".join(sorted(unused)))
        return dict(sorted(found.items()))

    def add(self, found, codes, block):
        """Enters the descriptions of one line, once or over a run of codes."""
        first, _, last = codes.partition("..")
        step = 0
        while True:
            turn = step // len(block)
            texts = tuple(text.replace("#", str(turn + 1)).replace("@", chr(ord("A") + turn))
                          for text in block[step % len(block)])
            code = following(first, step)
            if not re.fullmatch(r"[PBCU][0-3][0-9A-F]{3}", code):
                raise TableError("not a code: " + code)
            if code in found:
                raise TableError("comes twice: " + code)
            for text in texts:
                if len(text) > LONGEST_DESCRIPTION:
                    raise TableError("%s: %d characters: %s" % (code, len(text), text))
            found[code] = texts
            step += 1
            if step % len(block) == 0 and (not last or code >= last):
                break
        if last and code != last:
            raise TableError("the run ends at %s" % code)


def code_file(descriptions, column):
    """The text of a description file in one language."""
    lines = ["; Made by languages/src/build.py from the tables beside it.", "[errorcodes]"]
    lines += ["%s=%s" % (code, texts[column]) for code, texts in descriptions.items()]
    return "\n".join(lines) + "\n"
