#!/usr/bin/env bash
# Builds the fuzz programs and runs each for SECONDS (default 60), or only TARGET. What they learn
# stays in build/fuzz/corpus. An input that crashes, leaks, hangs or breaks a promise is kept; its
# path is printed, and the script fails. Mended, it goes to tests/fuzz/seeds/TARGET/.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
wanted=${2:-}
out=build/fuzz

scripts/install-packages.sh clang-14 libclang-rt-14-dev
scripts/build.sh fuzz

# Everything that the programs write lies in one folder, in memory where that can be, that goes with
# the script.
TMPDIR=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
export LSAN_OPTIONS="suppressions=$PWD/tests/support/leaks.supp:print_suppressions=0"
export ASAN_OPTIONS="detect_stack_use_after_return=0"

# The shipped files that a target begins with; what the seeds of its own do not cover.
shipped() {
    case $1 in
        profile) ls languages/*.ini languages/*.sensors skins/*.ini src/vehicle/scenarios/*.ini ;;
        sensors) ls languages/*.sensors ;;
        skin) ls skins/*.ini tests/skin/data/*.ini ;;
        vehicle) ls src/vehicle/scenarios/*.ini ;;
        functions)  # the function texts of the skins, a line each
            sed -nE 's/^[A-Za-z0-9]*(Function|Command)=//p' skins/*.ini | sort -u >"$TMPDIR/functions"
            echo "$TMPDIR/functions" ;;
    esac
}

failed=0
mkdir -p $out/found
for program in $out/fuzz/fuzz_*; do
    target=${program##*fuzz_}
    [ -z "$wanted" ] || [ "$wanted" = "$target" ] || continue
    corpus=$out/corpus/$target
    seeds=$TMPDIR/$target.seeds
    mkdir -p "$corpus" "$seeds"
    shipped "$target" | while read -r file; do cp "$file" "$seeds/"; done
    folders=("$corpus" "$seeds")
    [ -d "tests/fuzz/seeds/$target" ] && folders+=("tests/fuzz/seeds/$target")
    log=$TMPDIR/$target.log
    if "$program" "${folders[@]}" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=2048 \
        -max_len=65536 -print_final_stats=1 -artifact_prefix="$out/found/$target-" >"$log" 2>&1; then
        printf '%-10s %s\n' "$target" "$(grep -o 'Done .*' "$log")"
    else
        failed=1
        grep -vE '^#[0-9]+[[:space:]]+(NEW|REDUCE|pulse|RELOAD)' "$log" | tail -n 60
        echo "$target: $(grep -o "$out/found/.*" "$log" | tail -n 1)"
    fi
done
[ "$wanted" = "" ] || [ -x "$out/fuzz/fuzz_$wanted" ] || { echo "No target $wanted" >&2; exit 2; }
exit $failed
