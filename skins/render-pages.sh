#!/usr/bin/env bash
# Renders every page and box of the shipped skins for docs/pictures, the landscape ones small and large.
#
#   [BUILD=build] skins/render-pages.sh
set -euo pipefail
cd "$(dirname "$0")/.."

render() {
    local folder=docs/pictures/$1-$2
    rm -rf "$folder"
    scripts/render-pages.sh "$folder" "$2" "$1" >/dev/null
    optipng -quiet -strip all -o1 "$folder"/*.png
}
for size in 800x480 1280x720; do
    render night $size
    render day $size
done
render portrait 480x800
render portrait-day 480x800
du -sh docs/pictures
