#!/usr/bin/env python3
"""Makes the skins: the ini files, the pictures at both sizes, the start-up picture and the
program's icon.

    build.py            writes them; needs rsvg-convert (librsvg2-bin), optipng and the DejaVu fonts
    build.py --check    changes nothing; says what is out of date, as far as that can be told without
                        drawing, and ends with status 1 if anything is; needs the fonts only"""

import ctypes
import os
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

HERE = os.path.dirname(os.path.abspath(__file__))
SKINS = os.path.dirname(HERE)
STARTUP = os.path.join(SKINS, "../packaging/Dravik.jpg")
ICONS = os.path.join(SKINS, "../packaging/icons")
ICON_SIZES = 16, 22, 24, 32, 48, 64, 128, 256

# What sensors and texts are called in each language, to measure it.
sys.path.append(os.path.join(SKINS, "../languages/src"))

import pages  # noqa: E402
import portrait  # noqa: E402
from palette import DAY, NIGHT, PALETTES, check_shapes  # noqa: E402
from skin import Skin  # noqa: E402

# Name, colours and pages of each skin.
MADE = ([(name, colors, pages.all_pages) for name, colors in PALETTES.items()]
        + [(portrait.NIGHT, NIGHT, portrait.all_pages), (portrait.DAY, DAY, portrait.all_pages)])


def render(svg, path, zoom):
    subprocess.run(["rsvg-convert", "--zoom", str(zoom), "--output", path],
                   input=svg.encode(), check=True)
    subprocess.run(["optipng", "-quiet", "-strip", "all", "-o1", path], check=True)


def picture_files(skin):
    """What each picture file is drawn from, and how large."""
    return {name + ending: (svg, zoom) for name, (_, _, svg) in skin.pictures.items()
            for ending, zoom in ((".png", 1), ("@2x.png", 2))}


def ini_path(skin):
    return os.path.join(SKINS, skin.name + ".ini")


def out_of_date(skin):
    with open(ini_path(skin), newline="") as file:
        if file.read() != skin.ini():
            yield skin.name + ".ini"
    for name in picture_files(skin).keys() ^ set(os.listdir(os.path.join(SKINS, skin.name))):
        yield skin.name + "/" + name


def write_pictures(skin, pool):
    folder = os.path.join(SKINS, skin.name)
    os.makedirs(folder, exist_ok=True)
    wanted = picture_files(skin)
    for file in os.listdir(folder):
        if file not in wanted:
            os.remove(os.path.join(folder, file))
    return [pool.submit(render, svg, os.path.join(folder, file), zoom)
            for file, (svg, zoom) in wanted.items()]


def write_startup():
    """A JPEG, through the library that rsvg-convert itself comes with."""
    pixbuf = ctypes.CDLL("libgdk_pixbuf-2.0.so.0")
    pixbuf.gdk_pixbuf_new_from_file.restype = ctypes.c_void_p
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "startup.png")
        render(pages.startup(NIGHT), path, 1)
        picture = pixbuf.gdk_pixbuf_new_from_file(path.encode(), None)
    saved = pixbuf.gdk_pixbuf_save(ctypes.c_void_p(picture), STARTUP.encode(), b"jpeg", None,
                                   b"quality", b"92", None)
    if not saved:
        raise OSError("could not write " + STARTUP)


def write_icons():
    """The icon as a drawing, and as a picture in every size that desktops and installers ask for."""
    os.makedirs(ICONS, exist_ok=True)
    with open(os.path.join(ICONS, "dravik.svg"), "w", newline="\n") as file:
        file.write(icon_drawing())
    for size in ICON_SIZES:
        render(icon_drawing(), os.path.join(ICONS, f"dravik-{size}.png"), size / 128)


def icon_drawing():
    return pages.app_icon(NIGHT, 128) + "\n"


def icons_out_of_date():
    with open(os.path.join(ICONS, "dravik.svg")) as file:
        return file.read() != icon_drawing()


def main():
    skins = []
    faults = []
    for name in PALETTES:
        faults += check_shapes(name)
    for name, colors, all_pages in MADE:
        skin = Skin(name, colors)
        all_pages(skin)
        skin.check()
        faults += skin.faults
        skins.append(skin)
    if "--check" in sys.argv[1:]:
        faults += [f"out of date: {name}" for skin in skins for name in out_of_date(skin)]
        if icons_out_of_date():
            faults.append("out of date: packaging/icons")
    if faults:
        print("\n".join(dict.fromkeys(faults)), file=sys.stderr)
        return 1
    if "--check" in sys.argv[1:]:
        return 0
    with ThreadPoolExecutor(2) as pool:
        jobs = []
        for skin in skins:
            with open(ini_path(skin), "w", newline="\n") as file:
                file.write(skin.ini())
            jobs += write_pictures(skin, pool)
        for job in jobs:
            job.result()
    write_startup()
    write_icons()
    print(f"{len(jobs)} pictures")
    return 0


if __name__ == "__main__":
    sys.exit(main())
