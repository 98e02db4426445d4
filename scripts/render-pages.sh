#!/usr/bin/env bash
# Renders every page of the skin, over the virtual vehicle with stored trouble codes, as PNG files.
#
#   scripts/render-pages.sh FOLDER [WIDTHxHEIGHT [SKIN]]
set -euo pipefail
cd "$(dirname "$0")/.."

target=$(realpath -m "${1:?where to put the pictures}")
size=${2:-800x480}
skin=${3:-night}
mkdir -p "$target"

# The menu list of the skin names its pages.
pages=$(sed -n 's/^Menu[0-9]*=\(.*\)$/\1/p' "skins/$skin.ini" | tr -d '\r')
requests() {
    echo "wait 7000"
    for page in ${pages:-mainmenu}; do
        printf 'do openmenu_%s\nwait 2500\ngrab %s/%s.png\n' "$page" "$target" "$page"
    done
}
requests | QT_QPA_PLATFORM=offscreen build/dravik --folder build --skin "$skin" --demo faults \
    --windowed "$size" --console | { grep -v '^ok$' || true; }
ls "$target"/*.png
