#!/bin/sh
# Makes the shipped skins from their sources in skins/src.
set -eu
exec python3 -B "$(dirname "$0")/src/build.py" "$@"
