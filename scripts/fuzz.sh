#!/usr/bin/env bash
# Builds the fuzz programs and runs each for SECONDS (default 60), or only TARGET. What they learn
# stays in build/fuzz/corpus. An input that crashes, leaks, hangs or breaks a promise is kept; its
# path is printed, and the script fails. Mended, it goes to tests/fuzz/seeds/TARGET/.
# FUZZ_SEED fixes the order of the tries; without it each run is another one.
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

# Writes what a target begins with into the folder $2: the shipped files, in pieces small enough to be
# tried often.
size=4096
take_shipped() {
    case $1 in
        profile) cat languages/*.ini skins/*.ini src/vehicle/scenarios/*.ini |
            split -C $size -a 4 - "$2/" ;;
        sensors) for file in languages/*.sensors; do head -c $size "$file" >"$2/${file##*/}"; done ;;
        skin)  # every section as the first page
            cat skins/*.ini tests/skin/data/*.ini | tr -d '\r' |
                awk -v folder="$2" '/^\[/ { close(file); file = folder "/" ++n; $0 = "[mainmenu]" }
                                    n { print >file }' ;;
        vehicle) cp src/vehicle/scenarios/*.ini "$2" ;;
        functions) sed -nE 's/^[A-Za-z0-9]*(Function|Command)=//p' skins/*.ini | sort -u |
            split -l 40 -a 4 - "$2/" ;;
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
    take_shipped "$target" "$seeds"
    folders=("$corpus" "$seeds")
    [ -d "tests/fuzz/seeds/$target" ] && folders+=("tests/fuzz/seeds/$target")
    log=$TMPDIR/$target.log
    if "$program" "${folders[@]}" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=2048 -seed="${FUZZ_SEED:-0}" \
        -max_len=$size -print_final_stats=1 -artifact_prefix="$out/found/$target-" >"$log" 2>&1; then
        printf '%-10s %s\n' "$target" "$(grep -o 'Done .*' "$log")"
    else
        failed=1
        grep -vE '^#[0-9]+[[:space:]]+(NEW|REDUCE|pulse|RELOAD)' "$log" | tail -n 60
        echo "$target fails with $(sed -n 's/.*Test unit written to //p' "$log")"
    fi
done
[ "$wanted" = "" ] || [ -x "$out/fuzz/fuzz_$wanted" ] || { echo "No target $wanted" >&2; exit 2; }
exit $failed
