#!/usr/bin/env bash
# Builds and packs Dravik for arm64 inside the chroot of scripts/package.sh, where the source tree is
# /source; its history is out of reach. Options of the build may follow.
#
#   packaging/debian/cross-build.sh [OPTION]...
set -euo pipefail
build=/source/build-arm64

cmake -S /source -B "$build" -G Ninja --log-level=WARNING \
    --toolchain /source/cmake/aarch64-linux-gnu.cmake -DCMAKE_BUILD_TYPE=Release \
    -DDRAVIK_TESTS=OFF -DDRAVIK_BENCH=OFF "$@" >/dev/null
cmake --build "$build" --target dravik dravik-vehicle program-folder manual
/source/packaging/debian/make-deb.sh "$build" arm64 /source/dist
