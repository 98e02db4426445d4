#!/usr/bin/env python3
"""Checks that every room of src/ uses only the rooms that docs/architecture.md allows it.

    .ci/check_rooms.py [BUILD]          BUILD is a folder in which everything has been built

What a file uses is taken from what the compiler saw: the headers of a source file from the build's
own record of them, those of a header from compiling it alone. What an object file calls, by name or
by a declaration written by hand, is taken from its symbols. Qt is a room of its own in the table,
so that what is the system's own stays free of it.
"""
import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
QT = "Qt"
QT_IN_SOURCES = "(Qt)"  # not in headers
QT_NAME = re.compile(r"\bQ[A-Z][A-Za-z]+\b")


def read_table(root):
    """The rooms and what each may use, from the table in docs/architecture.md.

    A row is "| `room` | what it is | `room` `room` Qt |"; "(Qt)" allows it in sources alone. A row
    for a part of a room ("`skin/check`") tells what the files of that part may use.
    """
    table = {}
    with open(os.path.join(root, "docs/architecture.md"), encoding="utf-8") as text:
        for line in text:
            row = re.match(r"\| `([a-z/]+)` \|.*\|([^|]*)\|$", line.strip())
            if row:
                table[row[1]] = set(re.findall(r"`([a-z/]+)`|(\(?Qt\)?)$", row[2].strip()))
                table[row[1]] = {room or qt for room, qt in table[row[1]]}
    return table


class Rooms:
    def __init__(self, root, build, built_from=None):
        """@param built_from  the tree that BUILD was made from, where `root` is a copy of it"""
        self.root, self.build = os.path.realpath(root), os.path.realpath(build)
        self.built_from = os.path.realpath(built_from or root)
        self.src = os.path.join(self.root, "src") + os.sep
        self.table = read_table(self.root)
        self.faults = []

    # Which room a file belongs to, and what a room may use -------------------------------------

    def part_of(self, path):
        """The row of a source path below src/: the longest that it lies in; None outside of src."""
        if not path.startswith(self.src):
            return None
        folder = os.path.dirname(path[len(self.src):])
        while folder and folder not in self.table:
            folder = os.path.dirname(folder)
        return folder or path[len(self.src):].split(os.sep)[0]

    def check_use(self, path, used, how):
        """Complains when the file may not use that room."""
        if not self.allows(path, used):
            self.faults.append(f"{self.name(path)} {how}: {self.part_of(path)} may not use {used}")

    def allows(self, path, used):
        part = self.part_of(path)
        allowed = self.table.get(part, ())
        if used == QT:
            return QT in allowed or (QT_IN_SOURCES in allowed and path.endswith(".cpp"))
        if used.split("/")[0] == part.split("/")[0]:
            return True
        return any(used == room or used.startswith(room + "/") for room in allowed)

    def name(self, path):
        return os.path.relpath(path, self.root)

    def check_table(self):
        """No room may use one that uses it in turn."""
        uses = {}
        for part, allowed in self.table.items():
            room = part.split("/")[0]
            uses.setdefault(room, set()).update(a.split("/")[0] for a in allowed if "Qt" not in a)
        seen = {}

        def visit(room, road):
            if room in road:
                self.faults.append("a cycle of rooms: " + " -> ".join(road + [room]))
                return
            if room not in seen:
                seen[room] = True
                for other in sorted(uses.get(room, set()) - {room}):
                    visit(other, road + [room])

        for room in sorted(uses):
            visit(room, [])

    # What the compiler saw --------------------------------------------------------------------

    def check_headers_seen(self, path, seen):
        for header in sorted({os.path.realpath(h) for h in seen}):
            if "/qt6/" in header:
                self.check_use(path, QT, f"sees {os.path.basename(header)}")
                if not self.allows(path, QT):
                    break  # one is enough: it brings hundreds
            elif header != path and self.part_of(header):
                self.check_use(path, self.part_of(header), f"sees {self.name(header)}")

    def commands(self):
        """Source file to the command that compiles it."""
        with open(os.path.join(self.build, "compile_commands.json"), encoding="utf-8") as text:
            return {entry["file"]: entry for entry in json.load(text)}

    def objects(self):
        """Object file to the source file of src/ that it was made from."""
        source_folder = os.path.join(self.built_from, "src") + os.sep
        made_from = {}
        for source, entry in self.commands().items():
            target = entry.get("output") or re.search(r" -o (\S+)", entry["command"])[1]
            if source.startswith(source_folder):
                made_from[os.path.join(self.build, target)] = source
        return made_from

    def recorded(self):
        """What the build has written down: object file to the files that it was made from."""
        listing = subprocess.run(["ninja", "-C", self.build, "-t", "deps"], check=True,
                                 capture_output=True, text=True).stdout
        made_from = {}
        for block in listing.split("\n\n"):
            lines = block.strip().split("\n")
            target = lines[0].split(":")[0]
            made_from[target] = [os.path.normpath(os.path.join(self.build, line.strip()))
                                 for line in lines[1:]]
        return made_from

    def options_for(self, path):
        """The compiler, and the options with which a file of src/ is compiled; a header is compiled
        as the source file beside it is, or any other."""
        commands = self.commands()
        source = path.replace(self.root, self.built_from)
        entry = commands.get(source) or commands.get(source[:-1] + "cpp") or next(iter(
            e for s, e in commands.items() if s.endswith("/skin/SkinScreen.cpp")))
        words = shlex.split(entry["command"])
        if os.path.basename(words[0]) == "ccache":
            words = words[1:]
        options = ["-I", self.src]
        for word, following in zip(words[1:], words[2:]):
            if word.startswith(("-I", "-D", "-std", "-f")):
                options.append(word)
            elif word == "-isystem":
                options += [word, following]
        return [words[0], *options], entry["directory"]

    def headers_of(self, path):
        """The files that compiling one file alone sees."""
        command, folder = self.options_for(path)
        run = subprocess.run([*command, "-M", "-x", "c++", path], capture_output=True, text=True,
                             cwd=folder, check=False)
        if run.returncode != 0:
            self.faults.append(f"{self.name(path)} does not stand alone:\n{run.stderr}")
        names = run.stdout.replace("\\\n", " ").split()[2:]
        return [os.path.normpath(os.path.join(folder, name)) for name in names]

    # What the linker sees ---------------------------------------------------------------------

    @staticmethod
    def symbols(objects):
        """Object file to its (strong definitions, undefined names)."""
        listing = subprocess.run(["nm", "-A", "-P", *objects], check=True, capture_output=True,
                                 text=True).stdout
        found = {o: (set(), set()) for o in objects}
        for line in listing.splitlines():
            path, rest = line.split(": ", 1)
            name, kind = rest.split()[:2]
            if kind in "TDBR":
                found[path][0].add(name)
            elif kind == "U":
                found[path][1].add(name)
        return found

    def check_symbols(self, checked, others):
        """@param checked  object file to source file; @param others  the same of those that may be
        called and are not checked themselves"""
        found = self.symbols([*checked, *others])
        owner = {name: {**others, **checked}[o]
                 for o, (defined, _) in found.items() for name in defined}
        for built, source in checked.items():
            for name in sorted(found[built][1]):
                other = self.part_of(owner[name]) if name in owner else None
                if other and not self.allows(source, other):
                    self.check_use(source, other, f"calls {plain(name)}")

    # Plain text -------------------------------------------------------------------------------

    def check_text(self, path):
        """A Qt type can be named without its header."""
        if {QT, QT_IN_SOURCES} & self.table.get(self.part_of(path), {QT}):
            return
        with open(path, encoding="utf-8") as text:
            for number, line in enumerate(text, 1):
                code = line.split("//")[0]
                found = QT_NAME.search(re.sub(r'"(\\.|[^"\\])*"', '""', code))
                if found:
                    self.check_use(path, QT, f"names {found[0]} in line {number}")

    def all_files(self):
        return [os.path.join(folder, name) for folder, _, names in os.walk(self.src)
                for name in sorted(names) if name.endswith((".h", ".cpp"))]

    def check_one(self, path):
        """Checks a single file, compiling it."""
        self.check_headers_seen(path, self.headers_of(path))
        self.check_text(path)
        if not path.endswith(".cpp"):
            return
        with tempfile.TemporaryDirectory() as folder:
            compiled = os.path.join(folder, "one.o")
            command, run_in = self.options_for(path)
            subprocess.run([*command, "-O0", "-c", path, "-o", compiled], cwd=run_in, check=True)
            original = path.replace(self.root, self.built_from)
            others = {o: s.replace(self.built_from, self.root) for o, s in self.objects().items()
                      if s != original and os.path.exists(o)}
            self.check_symbols({compiled: path}, others)

    def run(self):
        """Checks the whole tree as it was built. @return the faults"""
        self.check_table()
        recorded = self.recorded()
        objects = {o: s for o, s in self.objects().items() if os.path.exists(o)}
        for built, source in objects.items():
            self.check_headers_seen(source, recorded.get(os.path.relpath(built, self.build), []))
        self.check_symbols(objects, {})
        headers = [p for p in self.all_files() if p.endswith(".h") and "Windows" not in p]
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for path, seen in zip(headers, pool.map(self.headers_of, headers)):
                self.check_headers_seen(path, seen)
        for path in self.all_files():
            self.check_text(path)
        return self.faults


def plain(symbol):
    return subprocess.run(["c++filt", symbol], capture_output=True, text=True,
                          check=False).stdout.strip()


def main():
    build = sys.argv[1] if len(sys.argv) > 1 else os.path.join(ROOT, "build")
    faults = Rooms(ROOT, build).run()
    print("\n".join(sorted(set(faults))), end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
