#!/usr/bin/env bash
# Builds everything and runs all tests. Arguments go to ctest, for instance -R LiveData.
set -euo pipefail
cd "$(dirname "$0")"

scripts/build.sh release
ctest --preset release --parallel 2 --progress "$@"
