#!/usr/bin/env python3
"""Makes the documents that ship with the program: the guides of docs/ as pages for a browser.

    make-manual.py TARGET        needs cmark-gfm

The table "Read on" of README.md says which there are, and becomes the first page. A link that leads
to no page, heading or picture stops the build: whoever reads these has no source tree beside them."""

import html
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
DOCS = ROOT / "docs"
ROW = re.compile(r"\| \[docs/(\w[\w-]*)\.md\]\([^)]*\) \| (.*) \|")

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<style>
:root {{ color-scheme: light dark; }}
body {{ font: 1.05em/1.5 "DejaVu Sans", sans-serif; max-width: 55em; margin: 1.5em auto; padding: 0 1em; }}
table {{ border-collapse: collapse; display: block; overflow-x: auto; }}
th, td {{ border: 1px solid #8884; padding: .3em .6em; text-align: left; vertical-align: top; }}
pre {{ background: #8882; padding: .8em; overflow-x: auto; }}
img {{ max-width: 100%; }}
</style>
</head>
<body>
{body}
</body>
</html>
"""


def guides():
    """Name and purpose of each guide."""
    return ROW.findall((ROOT / "README.md").read_text(encoding="utf-8"))


def converted(markdown):
    return subprocess.run(["cmark-gfm", "--extension", "table"], input=markdown, check=True,
                          capture_output=True, encoding="utf-8").stdout


def slug(heading):
    """What links call a heading: small letters, hyphens, no other signs."""
    plain = html.unescape(re.sub(r"<[^>]*>", "", heading)).lower()
    return re.sub(r"[^\w\- ]", "", plain).replace(" ", "-")


def with_anchors(body):
    return re.sub(r"<h(\d)>(.*?)</h\1>",
                  lambda m: f'<h{m[1]} id="{slug(m[2])}">{m[2]}</h{m[1]}>', body)


def page_of(name):
    markdown = (DOCS / f"{name}.md").read_text(encoding="utf-8")
    title = re.search(r"^# (.*)$", markdown, re.M)[1]
    body = re.sub(r'href="([\w-]+)\.md(#[^"]*)?"', r'href="\1.html\2"', with_anchors(converted(markdown)))
    back = '<p><a href="index.html">Documents of Dravik</a></p>\n'
    return PAGE.format(title=html.escape(f"{title} - Dravik"), body=back + body)


def first_page():
    rows = "\n".join(f"| [{name}]({name}.html) | {what} |" for name, what in guides())
    return PAGE.format(title="Dravik", body=converted(f"# Documents of Dravik\n\n| | |\n|---|---|\n{rows}\n"))


def broken_links(pages):
    """The links of the pages that lead nowhere; pictures are looked for in docs."""
    for page, text in pages.items():
        for link in re.findall(r'(?:href|src)="([^"]*)"', text):
            target, _, heading = link.partition("#")
            if re.match(r"[a-z]+:", link) or (DOCS / target).suffix == ".png" and (DOCS / target).exists():
                continue
            if f'id="{heading}"' not in pages.get(target or page, "") and (heading or target not in pages):
                yield f"{page}: {link} leads nowhere"


def main():
    target = pathlib.Path(sys.argv[1])
    pages = {f"{name}.html": page_of(name) for name, _ in guides()}
    pages["index.html"] = first_page()
    broken = list(broken_links(pages))
    if broken or len(pages) < 2:
        sys.exit("\n".join(broken) or "README.md names no guides")
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir(parents=True)
    for page, text in pages.items():
        (target / page).write_text(text, encoding="utf-8", newline="\n")
        for picture in re.findall(r'src="([^"]*)"', text):
            (target / picture).parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(DOCS / picture, target / picture)


if __name__ == "__main__":
    main()
