#!/usr/bin/env bash
# Checks a Debian package: what lintian and the desktop's validators say, and a life in a fresh
# chroot of Debian 12: installed, started, upgraded, removed and purged. Needs root.
#
#   scripts/check-deb.sh [PACKAGE [PACKAGE-BEFORE]]
#
# Without a package: the one for this machine in dist/. Without the one before, it is made from the
# package: a lower version with one file that has gone since and one that was another. A package for
# another architecture runs under qemu-user. Pictures that the installed program has drawn are left
# in dist/check/, to be looked at.
set -euo pipefail
cd "$(dirname "$0")/.."

version=$(sed -n 's/^project(dravik VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package=$(realpath "${1:-dist/dravik_${version}_$(dpkg --print-architecture).deb}")
before=${2:+$(realpath "$2")}
[ -e "$package" ] || { echo "There is no $package: see scripts/package.sh" >&2; exit 1; }
[ "$(id -u)" -eq 0 ] || { echo "A chroot needs root" >&2; exit 1; }
scripts/install-packages.sh mmdebstrap lintian desktop-file-utils appstream

work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT

lint() {
    lintian --allow-root --fail-on error,warning "$package"
    dpkg-deb -x "$package" "$work/unpacked"
    desktop-file-validate "$work"/unpacked/usr/share/applications/*.desktop
    appstreamcli validate --no-net "$work"/unpacked/usr/share/metainfo/*.xml
}

# The package as it might have been before this one.
make_before() {
    local root=$work/before
    dpkg-deb -R "$package" "$root"
    sed -i 's/^Version: .*/Version: 0.0.1/' "$root/DEBIAN/control"
    echo '; as it was' >>"$root/usr/share/dravik/skins/night.ini"
    cp "$root/usr/share/dravik/skins/night.ini" "$root/usr/share/dravik/skins/gone.ini"
    dpkg-deb --root-owner-group -Znone --build "$root" "$work/before.deb" >/dev/null
    rm -r "$root"
    echo "$work/before.deb"
}

# The bare system is fetched once a week; every check unpacks it afresh.
unpack_system() {
    local cache=${XDG_CACHE_HOME:-$HOME/.cache}/dravik-chroot
    local system=$cache/bookworm.tar
    mkdir -p "$cache"
    [ -n "$(find "$system" -mtime -7 2>/dev/null)" ] ||
        mmdebstrap --quiet --variant=apt bookworm "$system" http://deb.debian.org/debian
    mkdir "$work/root"
    tar -xf "$system" -C "$work/root"
}

echo "== $(basename "$package")"
lint
before=${before:-$(make_before)}
unpack_system
mkdir -p "$work/root/check/pictures"
cp "$package" "$work/root/check/package.deb"
cp "$before" "$work/root/check/before.deb"
cp packaging/debian/check-in-chroot.sh "$work/root/check/"
# The mounts and whatever still runs end with the namespaces.
ROOT=$work/root ARCH=$(dpkg-deb -f "$package" Architecture) unshare --mount --pid --fork bash -euc '
    mount -t proc proc "$ROOT/proc"
    mount -t devpts -o newinstance,ptmxmode=0666 devpts "$ROOT/dev/pts"
    exec chroot "$ROOT" /usr/bin/env -i ARCH="$ARCH" PATH=/usr/sbin:/usr/bin:/sbin:/bin \
        LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive /check/check-in-chroot.sh'
rm -rf dist/check
mkdir -p dist/check
cp "$work"/root/check/pictures/*.png dist/check/
