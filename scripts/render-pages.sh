#!/usr/bin/env bash
# Renders every page and box of a skin, over the virtual vehicle with stored trouble codes, as PNG.
#
#   [BUILD=build] scripts/render-pages.sh FOLDER [WIDTHxHEIGHT [SKIN]]
set -euo pipefail
cd "$(dirname "$0")/.."

target=$(realpath -m "${1:?where to put the pictures}")
size=${2:-800x480}
skin=${3:-night}
build=${BUILD:-build}
mkdir -p "$target"

has() { grep -qi "^\[$1\]" "skins/$skin.ini"; }
grab() { printf 'wait %s\ngrab %s/%s.png\n' "$1" "$target" "$2"; }

# The menu list of the skin names its pages; a freeze frame can be shown once codes are known.
# The diagnosis has a run of its own.
pages=$(sed -n 's/^Menu[0-9]*=\(.*\)$/\1/p' "skins/$skin.ini" | tr -d '\r' | grep -vix diagnosis || true)
more="freezeframe value choose find language welcome welcome2 welcome3"
# What the media page shows: a folder as a user might have it.
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -p "$home/music/Audio books" "$home/music/Live" "$home/music/Road songs"
touch "$home/music/01 Open road.mp3" "$home/music/02 Night drive.ogg" \
    "$home/music/03 Coast line.flac" "$home/music/Evening.pls"

requests() {
    echo "wait 7000"
    for page in ${pages:-mainmenu} $(for page in $more; do has "$page" && echo "$page"; done); do
        case $page in
            value) echo "do openvalue_rpm.engine" ;;
            *) echo "do openmenu_$page" ;;
        esac
        case $page in
            chart | value) grab 20000 "$page" ;;  # a trace takes time
            troublecodes) grab 6000 "$page" ;;    # and so does reading codes
            *) grab 2500 "$page" ;;
        esac
    done
    echo "do openmenu_mainmenu"
    for box in shortcuts alloff; do
        has "$box" || continue
        echo "do openbox_$box"
        grab 500 "box-$box"
        echo "do closebox"
    done
    echo "do showwarning_The codes were not cleared."
    grab 300 box-warning
    echo "click ok"
    echo "do showinfo_Chart 2026-11-21 12-00-00.bmp saved."
    grab 300 box-info
    echo "click ok"
    echo "do showquery_Clear troublecodes and all stored data?"
    grab 300 box-query
    echo "click no"
}

# The pages of the diagnosis, when it is done.
diagnosis_requests() {
    printf 'wait 7000\ndo openmenu_diagnosis\ndo obd_diagnose\nwait 20000\n'
    if has reports; then printf 'do report\nwait 25000\nclick ok\n'; fi
    for page in diagnosis codes codeframe readiness vehicle tests reports; do
        has "$page" || continue
        echo "do openmenu_$page"
        # Of the codes the one that is explained best.
        case $page in codes) printf 'do value_-\ndo value_-\ndo value_-\n' ;; esac
        grab 1000 "$page"
    done
}

# A folder of its own, for the report that is written.
mkdir "$home/program"
cp "$build/Dravik.ini" "$home/program"
ln -s "$PWD/skins" "$PWD/languages" "$(realpath "$build")/fonts" "$home/program"
show() {
    HOME="$home/music" QT_QPA_PLATFORM=offscreen "$build/dravik" --folder "$home/program" --skin "$skin" \
        --demo "$1" --windowed "$size" --console | { grep -v '^ok$' || true; }
}
requests | show faults
if has diagnosis; then diagnosis_requests | show workshop; fi
ls "$target"/*.png
