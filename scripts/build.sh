#!/usr/bin/env bash
# Installs what the build needs and builds one preset: release (default), debug or sanitize.
# Further arguments go to the build, for instance --target dravik.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh g++ cmake ninja-build ccache qt6-base-dev libgl-dev \
    libgtest-dev libgmock-dev libbenchmark-dev fonts-dejavu-core fonts-dejavu-extra python3 cmark-gfm

preset=${1:-release}
shift || true
cmake --preset "$preset" --log-level=WARNING >/dev/null
cmake --build --preset "$preset" "$@"
