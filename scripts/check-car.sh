#!/usr/bin/env bash
# Tries the ways in which a car computer shows Dravik, each with the virtual vehicle on a
# pseudo-terminal, and says in a line each what was seen. Pictures go to FOLDER, to be looked at.
# Needs no graphics hardware. Installs the packages it uses.
#
#   [BUILD=build] scripts/check-car.sh [FOLDER]
set -uo pipefail
cd "$(dirname "$0")/.."

build=$(realpath "${BUILD:-build}")
pictures=$(realpath -m "${1:-$build/car}")
scripts/install-packages.sh cage xwayland weston grim qt6-wayland xvfb x11-xserver-utils xprintidle \
    imagemagick procps systemd gcc libc6-dev libgl1-mesa-dri qt6-qpa-plugins libpam-systemd || exit 1

work=$(mktemp -d)
mkdir -p "$pictures"
failed=0
children=()
finish() {
    exec 3>&- 4<&-
    for child in "${children[@]}"; do kill "$child" 2>/dev/null; done
    wait
    rm -rf "$work"
}
trap finish EXIT
trap : PIPE  # a panel that has ended is told of by what it leaves

now() { date +%s%3N; }
pass() { printf 'ok      %s\n' "$*"; }
fail() {
    printf 'FAILED  %s\n' "$*"
    failed=$((failed + 1))
}
judge() { # TEXT COMMAND...: the command's end says whether the text holds
    local text=$1
    shift
    if "$@" >/dev/null 2>&1; then pass "$text"; else fail "$text"; fi
}

# Installed, as in the car, with the settings that the car gets, and somebody who has left the welcome.
cmake --install "$build" --prefix "$work/usr" >/dev/null || exit 1
dravik=$work/usr/bin/dravik
car=$work/usr/share/dravik/car
export XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work/run HOME=$work/home LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM QT_SCALE_FACTOR
mkdir -p -m 700 "$XDG_CONFIG_HOME/dravik" "$XDG_RUNTIME_DIR" "$HOME"
settings=$XDG_CONFIG_HOME/dravik/Dravik.ini
{ sed '/^Welcome=/d' "$car/Dravik.ini" && printf '\n[Ports]\nCOM1=%s\n' "$XDG_RUNTIME_DIR/interface"; } >"$settings"
# As a user like the unit's: cage refuses to run as root.
as_user=()
if [ "$(id -u)" = 0 ]; then
    as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
    chmod 711 "$work"
    chown -R nobody:nogroup "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR" "$HOME"
fi
"${as_user[@]}" "$work/usr/bin/dravik-vehicle" --link "$XDG_RUNTIME_DIR/interface" >/dev/null 2>&1 &
children+=($!)

# --- A panel, asked through its console ---------------------------------------------------------

main=0      # what the unit's ExecStart would be
started=0   # milliseconds from its start to its first page
ask() {
    answer=
    echo "$1" 2>/dev/null >&3
    IFS= read -r -t 60 answer <&4
}
start() { # COMMAND...
    rm -f "$work/in" "$work/out"
    mkfifo "$work/in" "$work/out"
    local from
    from=$(now)
    "${as_user[@]}" "$@" --console <"$work/in" >"$work/out" 2>"$work/log" 3>&- 4<&- &
    main=$!
    exec 3>"$work/in" 4<"$work/out"
    ask "text obd_status"
    started=$(($(now) - from))
}
live() { # the vehicle's values arrive, without a touch
    ask "do openmenu_dashboard"
    for ((try = 0; try < 300; try++)); do
        ask "text obd_status"
        [ "$answer" = "Receiving Data." ] && ask "wait 3000" && return
        [ -n "$answer" ] || return 1
        sleep 0.1
    done
    return 1
}
program() { # the program itself, in cage the child of what was started
    if [ "$(cat "/proc/$main/comm" 2>/dev/null)" = cage ]; then pgrep -P "$main" -x dravik; else echo "$main"; fi
}
stop() { # WAY
    local from took id
    id=$(program)
    from=$(now)
    kill -TERM "$id" 2>/dev/null
    wait "$main"
    local result=$?
    took=$(($(now) - from))
    exec 3>&- 4<&-
    if [ "$result" = 0 ] && [ "$took" -lt 1000 ]; then
        pass "$1: ended $took ms after SIGTERM"
    else
        fail "$1: ended $took ms after SIGTERM, status $result"
    fi
}
picture() { # WAY FILE WIDTHxHEIGHT: of the size of the screen, and not empty
    local seen
    seen=$(identify -format '%wx%h %k' "$2" 2>/dev/null)
    if [ "${seen% *}" = "$3" ] && [ "${seen#* }" -gt 100 ]; then
        pass "$1: first page ${started} ms after the start, live data by itself: ${2#"$PWD"/} ($3)"
    else
        fail "$1: picture is '${seen}' (size, colours), not $3; $(tail -n 2 "$work/log" | tr '\n' ' ')"
    fi
}

# --- The unit -----------------------------------------------------------------------------------

for way in cage eglfs linuxfb; do
    root=$work/root-$way
    # What the unit names must be there to be verified.
    mkdir -p "$root/usr/bin" "$root/usr/share/dravik" "$root/etc/pam.d" "$root/usr/lib/systemd"
    cp -r "$car" "$root/usr/share/dravik/"
    cp -r /usr/lib/systemd/system "$root/usr/lib/systemd/"
    cp /bin/true "$root/usr/bin/dravik"
    cp /bin/true "$root/usr/bin/cage"
    cp /bin/true "$root/usr/bin/sh"
    ln -s usr/bin "$root/bin"
    said=$(ROOT=$root "$car/setup" "$way" 2>&1) &&
        said=$(systemd-analyze verify --root="$root" --man=no dravik-panel.service 2>&1)
    if [ $? = 0 ] && [ -z "$said" ]; then pass "unit for $way: set up, systemd-analyze verify is content"; else fail "unit for $way: $said"; fi
    judge "unit for $way: starts with the computer, first settings are there" \
        test -L "$root/etc/systemd/system/multi-user.target.wants/dravik-panel.service" \
        -a "$(grep -cE '^(Misc=12|Reconnect=[1-9].*)$' "$root/var/lib/dravik/Dravik.ini")" = 2
done

# --- Wayland ------------------------------------------------------------------------------------

screen() { # WIDTHxHEIGHT OPTION...: an X server without a window manager; its display in $display
    Xvfb -displayfd 5 -screen 0 "${1}x24" -nolisten tcp "${@:2}" 5>"$work/display" >/dev/null 2>&1 3>&- 4<&- &
    server=$!
    children+=("$server")
    until [ -s "$work/display" ]; do sleep 0.1; done
    display=:$(cat "$work/display")
    rm -f "$work/display"
}
x_picture() { DISPLAY=$display import -window root "$1"; }
wayland_picture() { WAYLAND_DISPLAY=$(basename "$(ls "$XDG_RUNTIME_DIR"/wayland-? | head -1)") grim "$1"; }

# The environment as in the unit.
read -r -a wayland <<<"env $(sed -n 's/^Environment=\(QT_QPA.*\)/\1/p' "$car/dravik-panel.service")"
cage=("${wayland[@]}" WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1)

# In a window of an X server: the headless screen cannot be captured while the program's own buffer is
# shown on it as it is, which only an unturned one allows.
screen 1024x768
start "${cage[@]}" WLR_BACKENDS=x11 DISPLAY="$display" cage -- "$dravik"
live
x_picture "$pictures/cage.png"
picture "cage" "$pictures/cage.png" 1024x768
stop "cage"
for turns in 1 3; do
    mapfile -t rotate < <(for ((turn = 0; turn < turns; turn++)); do echo -r; done)
    start "${cage[@]}" cage "${rotate[@]}" -- "$dravik" --skin portrait
    live
    wayland_picture "$pictures/cage-$turns.png"
    picture "cage, $turns quarter turns" "$pictures/cage-$turns.png" 720x1280
    stop "cage, $turns quarter turns"
done
start "${cage[@]}" WLR_BACKENDS=x11 DISPLAY="$display" QT_SCALE_FACTOR=1.5 cage -- "$dravik"
live
ask "do config"
ask "wait 1000"
x_picture "$pictures/cage-dense.png"
picture "cage, QT_SCALE_FACTOR=1.5, the settings" "$pictures/cage-dense.png" 1024x768

# The unit's own way of ending.
end=$(sed -n 's/^ExecStop=-.*-c .\(.*\).$/\1/p' "$car/dravik-panel.service")
sed -i '/^\[Resume\]/,$d' "$settings"
from=$(now)
MAINPID=$main sh -c "$end"
took=$(($(now) - from))
wait "$main"
exec 3>&- 4<&-
judge "cage, as the unit ends it: $took ms, state kept" \
    test "$took" -lt 1000 -a "$(grep -c '^\[Resume\]' "$settings")" = 1

# Power cut: everything is killed at once, and the next start is whole.
start "${cage[@]}" cage -- "$dravik"
live
kill -9 "$(program)"
timeout 10 tail -s 0.1 --pid="$main" -f /dev/null
judge "cage, program killed: cage ends too, so that the unit starts it again" test ! -d "/proc/$main"
wait "$main" 2>/dev/null
exec 3>&- 4<&-
start "${cage[@]}" cage -- "$dravik"
judge "cage, after the kill: connects and shows live data by itself" live
kill -9 "$(program)" "$main"
wait "$main" 2>/dev/null
exec 3>&- 4<&-
rm -f "$XDG_RUNTIME_DIR"/wayland-*

# A dense screen, which the compositor says: everything twice as large, and as sharp as the screen.
screen 1600x960
"${as_user[@]}" env DISPLAY="$display" weston --backend=x11-backend.so --use-pixman --shell=kiosk-shell.so \
    --socket=wayland-car --idle-time=0 --width=800 --height=480 --scale=2 >"$work/weston.log" 2>&1 3>&- 4<&- &
compositor=$!
children+=("$compositor")
for ((try = 0; try < 100; try++)); do [ -S "$XDG_RUNTIME_DIR/wayland-car" ] && break || sleep 0.1; done
start "${wayland[@]}" WAYLAND_DISPLAY=wayland-car "$dravik"
live
x_picture "$pictures/weston-dense.png"
picture "weston's kiosk shell, scale 2" "$pictures/weston-dense.png" 1600x960
stop "weston"
kill "$compositor" "$server"

# --- X without a window manager -----------------------------------------------------------------

on_x() { # WAY FILE SIZE [DPI [SKIN]]
    screen "$3" -dpi "${4:-96}"
    start env DISPLAY="$display" "$dravik" --skin "${5:-night}"
    live
    x_picture "$2"
    picture "$1" "$2" "$3"
    stop "$1"
    kill "$server"
    wait "$server" 2>/dev/null
}
on_x "X without a window manager" "$pictures/x.png" 800x480
on_x "X, 220 dpi" "$pictures/x-dense.png" 1920x1080 220
on_x "X, upright" "$pictures/x-upright.png" 600x1024 96 portrait

# --- No compositor ------------------------------------------------------------------------------

gcc -shared -fPIC -o "$work/framebuffer.so" scripts/car/framebuffer.c -ldl || fail "framebuffer.c"
for size in 800x480 480x800; do
    skin=$([ $size = 800x480 ] && echo night || echo portrait)
    buffer=$XDG_RUNTIME_DIR/fb-$size
    truncate -s $((${size%x*} * ${size#*x} * 4)) "$buffer"
    chmod 666 "$buffer"
    start env FRAMEBUFFER=$size LD_PRELOAD="$work/framebuffer.so" QT_QPA_FB_DISABLE_INPUT=1 \
        QT_QPA_PLATFORM=linuxfb:fb="$buffer":nographicsmodeswitch "$dravik" --skin "$skin"
    live
    convert -size $size -depth 8 "BGRA:$buffer" -alpha off "$pictures/linuxfb-$size.png"
    picture "linuxfb over a file" "$pictures/linuxfb-$size.png" $size
    stop "linuxfb"
done
for turn in 0 90; do
    skin=$([ $turn = 0 ] && echo night || echo portrait)
    screen 800x480
    start env DISPLAY="$display" LIBGL_ALWAYS_SOFTWARE=1 QT_QPA_EGLFS_ROTATION=$turn QT_QPA_EGLFS_DISABLE_INPUT=1 \
        QT_QPA_PLATFORM=eglfs QT_QPA_EGLFS_INTEGRATION=eglfs_x11 "$dravik" --skin "$skin"
    live
    x_picture "$pictures/eglfs-$turn.png"
    ask "do config"
    ask "wait 1500"
    x_picture "$pictures/eglfs-$turn-settings.png"
    picture "eglfs, turned by $turn, over X instead of the kernel's driver" "$pictures/eglfs-$turn.png" 800x480
    stop "eglfs"
    kill "$server"
    wait "$server" 2>/dev/null
done

# --- The screen stays on ------------------------------------------------------------------------

# A stand-in for the session manager notes when its lock is taken and given back.
mkdir -p "$work/bin"
cat >"$work/bin/systemd-inhibit" <<END
#!/bin/sh
echo "taken: \$*" >>"$XDG_RUNTIME_DIR/lock"
cat
echo given back >>"$XDG_RUNTIME_DIR/lock"
END
chmod 755 "$work/bin" "$work/bin/systemd-inhibit"
screen 800x480
idle() { DISPLAY=$display xprintidle; }
start env PATH="$work/bin:$PATH" DISPLAY="$display" "$dravik"
live
sleep 3
at_work=$(idle)
judge "screen: while live data are shown X counts no idle time (${at_work} ms)" test "$at_work" -lt 2500
judge "screen: the session manager is told once ($(head -1 "$XDG_RUNTIME_DIR/lock"))" \
    test "$(grep -c taken.*what=idle "$XDG_RUNTIME_DIR/lock")" = 1
ask "do obd_disconnect"
ask "wait 6000"
at_rest=$(idle)
judge "screen: without them X may blank (${at_rest} ms)" test "$at_rest" -ge 4000
kill -9 "$(program)"
wait "$main" 2>/dev/null
exec 3>&- 4<&-
for ((try = 0; try < 50; try++)); do grep -q given "$XDG_RUNTIME_DIR/lock" && break || sleep 0.1; done
judge "screen: the lock does not outlive a killed program" grep -q given "$XDG_RUNTIME_DIR/lock"

[ "$failed" = 0 ] && echo "The car computer: everything passed." || { echo "The car computer: $failed failed."; exit 1; }
