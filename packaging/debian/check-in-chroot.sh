#!/usr/bin/env bash
# The part of scripts/check-deb.sh that runs inside the chroot: the life of the package.
set -euo pipefail
here=/check
driver=driver
home=/home/$driver
settings=$home/.config/dravik/Dravik.ini

fail() {
    echo "FAILED: $*" >&2
    exit 1
}
step() { printf '== %s\n' "$*"; }
installed_version() { dpkg-query -W -f='${Version}' "dravik:$ARCH"; }


# What it says is kept in a file, and shown when it fails.
apt() {
    apt-get -y -o Dpkg::Use-Pty=0 --no-install-recommends "$@" >/tmp/said 2>&1 || {
        cat /tmp/said >&2
        fail "apt-get $*"
    }
}

# Runs one of the installed programs as the driver; a foreign one in an emulator.
emulator=()
run() {
    local program=$1
    shift
    runuser -u $driver -- env -C $home HOME=$home XDG_RUNTIME_DIR=$home "${emulator[@]}" "/usr/bin/$program" "$@"
}

# Every file of the system, but for what the package tools keep for themselves.
all_files() {
    find / -xdev \( -path /proc -o -path /dev -o -path /tmp -o -path /home -o -path "$here" \
        -o -path /var/cache -o -path /var/log -o -path /var/lib/apt -o -path /var/lib/dpkg \) \
        -prune -o -print | sort
}

# Starts the demo, asks what is on the screen, and leaves a picture of it.
# Usage: start_demo PICTURE [OPTION]...; prints the answers.
start_demo() {
    local picture=$1
    shift
    printf '%s\n' 'wait 12000' 'do openmenu_dashboard' 'wait 4000' 'text obd_status' \
        'number sensor_rpm.engine' "grab /tmp/$picture.png" elements quit |
        run dravik --demo --console --windowed 800x480 "$@"
    install -m 644 "/tmp/$picture.png" $here/pictures/
}

# What start_demo has printed when all is well: ok ok ok, the status, a turning engine, and among the
# elements of the page a text.
expect_running() {
    local answers=$1 text=$2 status rpm
    status=$(sed -n 4p <<<"$answers")
    rpm=$(sed -n 5p <<<"$answers")
    [ "$status" = "Receiving Data." ] || fail "the demo says: $answers"
    [ "${rpm%%.*}" -ge 500 ] || fail "the engine turns at $rpm"
    grep -q "$text" <<<"$answers" || fail "the page does not show \"$text\""
}

step "A system without Dravik"
if [ "$ARCH" != "$(dpkg --print-architecture)" ]; then
    dpkg --add-architecture "$ARCH"
    emulator=(qemu-aarch64-static)
fi
apt update
# Beside the emulator what every system of that architecture has.
[ ${#emulator[@]} -eq 0 ] || apt install qemu-user-static "libc6:$ARCH" "libgcc-s1:$ARCH"
useradd --create-home --key HOME_MODE=0700 $driver
all_files >/tmp/fresh

step "The version before is installed with nothing but its dependencies"
apt install $here/before.deb
grep dialout /tmp/said || fail "nobody says how to reach a serial port"
run dravik --version | tee /tmp/version
grep -q 'commit [0-9a-f]' /tmp/version || fail "nobody knows from what it was built"
run dravik-vehicle --version
run dravik --check-skin || fail "the installed skin is not whole"
expect_running "$(start_demo before)" "Dashboard"
[ -e $settings ] || fail "a new user has no settings"

step "It is upgraded, with an own skin and changed settings"
mkdir -p $home/.config/dravik/skins
sed 's/^Label0Function=word_Dashboard/Label0Function=word_My own skin/' /usr/share/dravik/skins/day.ini >$home/.config/dravik/skins/mine.ini
chown -R $driver: $home
sed -i -e 's/^Skin=.*/Skin=mine/' -e 's/^ComPort=.*/ComPort=7/' $settings
echo '; my own remark' >>$settings
cp -a $home/.config/dravik /tmp/kept
apt install $here/package.deb
! grep dialout /tmp/said || fail "who upgrades is told what a new user is told"
[ "$(installed_version)" = "$(dpkg-deb -f $here/package.deb Version)" ] || fail "not upgraded"
diff -r /tmp/kept $home/.config/dravik || fail "the upgrade has touched the user's folder"
dpkg --verify "dravik:$ARCH" || fail "files are not as packed"
[ ! -e /usr/share/dravik/skins/gone.ini ] || fail "a file that has gone is still there"
! grep -q '^; as it was' /usr/share/dravik/skins/night.ini || fail "a file is as it was before"
expect_running "$(start_demo after)" "My own skin"
for line in Skin=mine ComPort=7 '; my own remark'; do
    grep -qx "$line" $settings || fail "lost from the settings: $line"
done

step "What goes with the program"
for page in "1 dravik" "1 dravik-vehicle" "5 dravik.ini"; do
    [ -e "$(dpkg -L "dravik:$ARCH" | grep "/man${page%% *}/${page#* }\.")" ] || fail "no page $page"
done
[ -e /usr/share/doc/dravik/html/index.html ] || fail "no documents"

step "It is removed, and purged"
apt remove "dravik:$ARCH"
[ ! -e /usr/bin/dravik ] || fail "still there after the removal"
grep -qx Skin=mine $settings || fail "the removal has touched the user's folder"
dpkg --purge "dravik:$ARCH" 2>&1 | grep -v "ignoring request to remove" || true  # nothing is left
apt autoremove --purge
all_files >/tmp/purged
diff /tmp/fresh /tmp/purged >/tmp/traces || {
    head -n 20 /tmp/traces
    fail "the system is not as it was"
}
echo "passed: $ARCH"
