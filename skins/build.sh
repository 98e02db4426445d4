#!/bin/sh
# Makes the skins night and day from their sources in skins/src.
set -eu
exec python3 -B "$(dirname "$0")/src/build.py" "$@"
