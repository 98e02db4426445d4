#!/usr/bin/env bash
# Renders every page and box of both skins for docs/pictures, small and large.
#
#   [BUILD=build] skins/render-pages.sh
set -euo pipefail
cd "$(dirname "$0")/.."

for skin in night day; do
    for size in 800x480 1280x720; do
        folder=docs/pictures/$skin-$size
        rm -rf "$folder"
        scripts/render-pages.sh "$folder" "$size" "$skin" >/dev/null
        optipng -quiet -strip all -o1 "$folder"/*.png
    done
done
du -sh docs/pictures
