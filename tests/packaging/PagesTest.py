"""Holds the pages of man and the completion to what the programs and the guide of the settings say.

    PagesTest.py SOURCE PROGRAM..."""

import pathlib
import re
import subprocess
import sys

COMPLETE = ("source packaging/linux/dravik.bash-completion; COMP_WORDS=({program} {words} ''); "
            "COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1)); _dravik; printf '%s\\n' \"${{COMPREPLY[@]}}\"")


def options_of(program):
    said = subprocess.run([program, "--help"], capture_output=True, encoding="utf-8", check=True).stdout
    return set(re.findall(r"^  (--[\w-]+)", said, re.M)), said


def page_of(source, page):
    text = (source / f"packaging/linux/man/{page}.in").read_text(encoding="utf-8")
    return text.replace("\\-", "-")


def completions(source, program, words=""):
    script = COMPLETE.format(program=program, words=words)
    said = subprocess.run(["bash", "-c", script], cwd=source, capture_output=True, encoding="utf-8")
    return set(said.stdout.split()), said.stderr


def main():
    source, programs = pathlib.Path(sys.argv[1]), sys.argv[2:]
    faults = []
    for program in programs:
        name = pathlib.Path(program).name
        options, said = options_of(program)
        if not options:
            faults.append(f"{name} --help names no options")
        page = page_of(source, name + ".1")
        offered, complaint = completions(source, name, "--windowed" if name == "dravik" else "")
        faults += [f"{name}.1 lacks {option}" for option in options if option not in page]
        faults += [f"completion of {name} differs: {o}" for o in options ^ offered]
        faults += [complaint] if complaint else []
        scenarios = re.search(r"drive.*?flaky", said, re.S)[0].replace("(default)", "").split(",")
        offered, _ = completions(source, name, "--demo" if "--demo" in options else "--scenario")
        faults += [f"completion of {name} lacks the scenario {scenario.strip()}"
                   for scenario in scenarios if scenario.strip() not in offered]
    guide = (source / "docs/settings.md").read_text(encoding="utf-8")
    table = guide[guide.index("## Dravik.ini"):guide.index("`Misc` is the sum")]
    keys = {key for row in re.findall(r"^\| `\w+` \| ([^|]*) \|", table, re.M)
            for key in re.findall(r"`(\w+)`", row)}
    page = page_of(source, "dravik.ini.5")
    faults += [f"dravik.ini.5 lacks {key}" for key in keys if not re.search(rf"\b{key}\b", page)]
    if len(keys) < 10:
        faults.append("the guide of the settings has no table of keys")
    sys.exit("\n".join(faults) or None)


if __name__ == "__main__":
    main()
