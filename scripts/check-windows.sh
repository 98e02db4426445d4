#!/usr/bin/env bash
# Tries the Windows program and its packages under Wine, as a new user whose name is not ASCII. Wants
# what "scripts/build-windows.sh --tests" has made. Installs what is missing. The last line tells what
# passed; pictures of the windows, to be looked at, are in build-windows/check/.
#
#   scripts/check-windows.sh [STEP...]     all steps, or those that are named
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh wine wine64 xvfb openbox imagemagick unzip
scripts/build.sh release --target dravik-vehicle >/dev/null

build=$PWD/build-windows
check=$build/check
work=$(mktemp -d /tmp/dravik-check.XXXXXX)
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")

# Wine calls the profile so. Its start menu holds no letters but those of Windows-1252.
export USER='Zoë Žák'
export LC_ALL=C.UTF-8 WINEPREFIX=$work/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
profile=$WINEPREFIX/drive_c/users/$USER
programs=$profile/AppData/Local/Programs/Dravik
settings=$profile/AppData/Roaming/Dravik
menu="$profile/AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
uninstall_key='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Dravik'

background=()
finish() {
    wineserver -k 2>/dev/null || true
    kill "${background[@]}" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

fail() {
    echo "  $*" >&2
    exit 1
}

# Tries a command until it succeeds.
await() {
    local seconds=$1 what=$2 end
    shift 2
    end=$((SECONDS + seconds))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $end ] || fail "$what: not within $seconds s"
        sleep 0.2
    done
}

windows_path() {
    winepath -w "$1" 2>/dev/null | tr -d '\r\n'
}

# Starts a program's console and asks it: "answer" is what it said.
open_console() {
    coproc panel { timeout 600 wine "$(windows_path "$1")" --console --windowed 2>/dev/null; }
}

ask() {
    printf '%s\n' "$1" >&"${panel[1]}"
    IFS= read -r -t 60 answer <&"${panel[0]}" || fail "no answer to \"$1\""
    answer=${answer%$'\r'}
}

close_console() {
    local pid=$panel_PID
    ask quit
    wait "$pid" || fail "the program ended with $?"
}

answers() {
    ask "$1"
    [[ $answer =~ $2 ]]
}

# The picture of the whole screen, which shows more than a few colours once the panel is there.
picture_of() {
    import -window root "$check/$1.png"
    [ "$(identify -format %k "$check/$1.png")" -gt 100 ]
}

prepare() {
    mkdir -p "$check"
    Xvfb -displayfd 5 -screen 0 1920x1200x24 5>"$work/display" 2>/dev/null &
    background+=($!)
    await 20 "the display" test -s "$work/display"
    DISPLAY=:$(cat "$work/display")
    export DISPLAY
    openbox >/dev/null 2>&1 &
    background+=($!)
    build/dravik-vehicle --link "$work/obd" >/dev/null &
    background+=($!)

    wineboot -i >/dev/null 2>&1
    [ -d "$profile" ] || fail "Wine has made no profile \"$USER\""
    {
        wine reg add 'HKCU\Software\Wine' /v Version /d win10 /f
        wine reg add 'HKLM\Software\Wine\Ports' /v COM1 /d "$work/obd" /f
        for font in 'MS Shell Dlg' 'MS Shell Dlg 2' Tahoma 'Segoe UI'; do
            wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' \
                /v "$font" /d 'DejaVu Sans' /f
        done
        wineserver -k -w
    } >/dev/null 2>&1
}

setup() {
    wine "$build/dravik-$version-setup.exe" /S "$@" || fail "the installer ended with $?"
}

silent_install() {
    setup
    for file in dravik.exe dravik-vehicle.exe uninstall.exe data/Dravik.ini data/skins/night.ini \
        data/fonts/DejaVuSans.ttf data/fonts/LICENCE-DejaVu.txt; do
        [ -s "$programs/$file" ] || fail "$file was not installed"
    done
    [ -s "$menu/Dravik.lnk" ] || fail "the start menu has no Dravik"
    [ ! -e "$menu/StartUp/Dravik.lnk" ] || fail "it starts with Windows, unasked"
    wine reg query "$uninstall_key" /v DisplayVersion 2>/dev/null | grep -q "$version" ||
        fail "the list of programs does not tell version $version"
}

is_running() {
    wine tasklist 2>/dev/null | grep -q dravik.exe
}

start_menu() {
    wine start "$(windows_path "$menu/Dravik.lnk")" >/dev/null 2>&1
    await 60 "the panel" picture_of start-menu
    ! wine "$build/dravik-$version-setup.exe" /S ||
        fail "the installer has replaced a running program"
    wine taskkill /IM dravik.exe >/dev/null 2>&1
    await 20 "the end of the program" eval '! is_running'
    grep -q '^\[Resume\]' "$settings/Dravik.ini" || fail "no settings in the profile"
}

com_port() {
    sed -i -e '/^Welcome=/d' -e 's/^Misc=.*/Misc=4/' -e 's/^ComPort=.*/ComPort=1/' \
        "$settings/Dravik.ini"
    open_console "$programs/dravik.exe"
    await 60 "the connection" answers 'text obd_status' '^(Connected|Receiving Data)\.$'
    ask 'do openmenu_dashboard'
    await 60 "live values" answers 'source obd_0C' '^[1-9]'
    ask "grab $(windows_path "$check")\\dashboard.png"
    [ "$answer" = ok ] || fail "grab: $answer"
    close_console
    grep -q . "$settings/log.txt" || fail "no log in the profile"
}

# What the tests say; a program for each room, run as it is.
test_programs() {
    local program result count=0 tests=0 faults=0
    # The tests name their folders in the way of the compiler's library, which is not that of Windows.
    mkdir -p "$WINEPREFIX/drive_c/tests"
    for name in TEMP TMP; do
        wine reg add 'HKCU\Environment' /v $name /d 'C:\tests' /f >/dev/null 2>&1
    done
    wineserver -k -w || true
    for program in "$build"/tests/*.exe; do
        [ -e "$program" ] || fail "there are no test programs; build with --tests"
        result=$work/$(basename "$program" .exe).txt
        timeout 1200 wine "$program" --gtest_brief=1 >"$result" 2>&1 || {
            echo "  $(basename "$program") failed:" >&2
            grep -a '^\[  FAILED  \].*)' "$result" >&2 || tail -n 5 "$result" >&2
            faults=1
            continue
        }
        count=$((count + 1))
        tests=$((tests + $(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$result")))
    done
    echo "$count programs, $tests tests" | tee "$work/tests"
    return $faults
}

# The version before had a file that this one has not; the user has files and settings of his own.
upgrade() {
    local list=$programs/installed.txt
    [ -s "$list" ] || setup
    printf 'old.dll\r\n' | iconv -t UTF-16LE | cat - "$list" >"$work/list"
    mv "$work/list" "$list"
    touch "$programs/old.dll" "$programs/own.txt" "$programs/data/skins/own.ini"
    mkdir -p "$settings/skins"
    printf '[General]\r\n' >"$settings/skins/mine.ini"
    printf '[Options]\r\nSkin=day\r\n' >"$settings/Dravik.ini"
    cp -r "$settings" "$work/settings"
    setup /AUTOSTART
    [ ! -e "$programs/old.dll" ] || fail "a file of the version before was left"
    [ -e "$programs/own.txt" ] && [ -e "$programs/data/skins/own.ini" ] ||
        fail "a file of the user was removed"
    diff -r "$work/settings" "$settings" || fail "settings or own skins have changed"
    [ -s "$menu/StartUp/Dravik.lnk" ] || fail "it does not start with Windows"
    setup
    [ -s "$menu/StartUp/Dravik.lnk" ] || fail "the upgrade has taken it out of the start of Windows"
    rm "$programs/own.txt" "$programs/data/skins/own.ini"
}

portable() {
    local folder="$work/Über all/dravik-$version"
    unzip -q "$build/dravik-$version-windows.zip" -d "$work/Über all"
    rm -rf "$settings"
    open_console "$folder/dravik.exe"
    await 60 "the first page" answers 'text obd_status' .
    close_console
    grep -q '^\[Resume\]' "$folder/Dravik.ini" || fail "no settings beside the program"
    [ ! -e "$settings" ] || fail "settings in the profile, too"
}

uninstall() {
    [ -e "$programs/uninstall.exe" ] || setup
    mkdir -p "$settings"
    touch "$settings/mine.txt"
    wine "$programs/uninstall.exe" /S
    await 30 "the removal" test ! -e "$programs"
    [ -z "$(find "$menu" -iname '*dravik*')" ] || fail "the start menu still has Dravik"
    ! wine reg query "$uninstall_key" >/dev/null 2>&1 || fail "the list of programs still has it"
    [ -e "$settings/mine.txt" ] || fail "the user's own folder has gone, too"
    setup
    wine "$programs/uninstall.exe" /S /SETTINGS
    await 30 "the removal of the user's own folder" test ! -e "$settings"
}

passed=()
failed=()
step() {
    echo "== ${1//_/ }"
    set +e
    (
        set -e
        "$1"
    )
    if [ $? -eq 0 ]; then passed+=("$1"); else failed+=("$1"); fi
    set -e
}

prepare
steps=("$@")
[ $# -gt 0 ] || steps=(silent_install start_menu com_port test_programs upgrade portable uninstall)
for name in "${steps[@]}"; do step "$name"; done

list() { printf '%s, ' "$@" | sed 's/_/ /g; s/, $//'; }
[ -e "$work/tests" ] && tests=" ($(cat "$work/tests"))" || tests=
[ ${#failed[@]} -eq 0 ] || failures="; FAILED: $(list "${failed[@]}")"
echo "Dravik $version under $(wine --version): passed: $(list "${passed[@]}")$tests${failures:-}"
[ ${#failed[@]} -eq 0 ]
