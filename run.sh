#!/usr/bin/env bash
# Builds Dravik and shows it with the virtual vehicle. Arguments go to the program.
# Without a display it renders the pages to build/demo/*.png instead.
set -euo pipefail
cd "$(dirname "$0")"

scripts/build.sh release --target dravik dravik-vehicle program-folder

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ] || [ -e /dev/fb0 ]; then
    exec build/dravik --demo --windowed "$@"
fi
echo "There is no display: rendering the pages to build/demo/*.png"
exec scripts/render-pages.sh build/demo
