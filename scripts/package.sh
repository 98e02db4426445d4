#!/usr/bin/env bash
# Makes what users install. Installs what is missing.
#
#   scripts/package.sh deb [amd64]    Debian package, from the release build in build/
#   scripts/package.sh deb arm64      the same for arm64, cross-built in a chroot (needs root)
#   scripts/package.sh windows        what scripts/build-windows.sh makes
#
# The packages go to dist/. The same commit gives the same bytes: the date of everything in them is
# that of the commit, unless SOURCE_DATE_EPOCH is set. Options of the build, such as
# -DDRAVIK_HOMEPAGE=..., may follow; they stay set in the build folder.
set -euo pipefail
cd "$(dirname "$0")/.."

usage() {
    sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2
    exit 2
}
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
targets=(dravik dravik-vehicle program-folder manual)

# In build/, so that a build that is there already is only packed.
make_deb() {
    scripts/install-packages.sh dpkg-dev git
    [ $# -eq 0 ] || { scripts/build.sh release --target help >/dev/null && cmake build "$@" >/dev/null; }
    scripts/build.sh release --target "${targets[@]}"
    packaging/debian/make-deb.sh build "$(dpkg --print-architecture)" dist
}

# The chroot holds the compiler, and Qt for both architectures, so that nothing of this machine is
# touched. It is made once, in about three minutes.
make_foreign_deb() {
    local cache=${DRAVIK_ARM64_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/dravik-arm64}
    local root=$cache/root
    [ "$(id -u)" -eq 0 ] || { echo "A chroot needs root" >&2; exit 1; }
    scripts/install-packages.sh mmdebstrap git
    if [ ! -e "$cache/complete" ]; then
        rm -rf "$root"
        mkdir -p "$cache"
        mmdebstrap --quiet --variant=apt --architectures=amd64,arm64 --include="$(
            IFS=,
            echo "${cross_packages[*]}"
        )" bookworm "$root" http://deb.debian.org/debian
        touch "$cache/complete"
    fi
    mkdir -p "$root/source" dist
    # The mounts end with the namespace, however the build ends.
    SOURCE=$PWD ROOT=$root unshare --mount --fork bash -euc '
        mount --bind "$SOURCE" "$ROOT/source"
        mount -t proc proc "$ROOT/proc"
        exec chroot "$ROOT" /source/packaging/debian/cross-build.sh "$@"' bash \
        -DDRAVIK_COMMIT="$(git describe --always '--exclude=*' --abbrev=12 --dirty=+)" "$@"
}
cross_packages=(g++ g++-aarch64-linux-gnu cmake ninja-build ccache qt6-base-dev:amd64
    qt6-base-dev:arm64 libgl-dev:arm64 python3 cmark-gfm dpkg-dev qemu-user-static
    fonts-dejavu-core fonts-dejavu-extra)

what=${1:-}
shift || true
mkdir -p dist
case $what in
    deb)
        arch=amd64
        case ${1:-} in amd64 | arm64) arch=$1 && shift ;; esac
        if [ "$arch" = "$(dpkg --print-architecture)" ]; then make_deb "$@"; else make_foreign_deb "$@"; fi
        ;;
    windows) exec scripts/build-windows.sh "$@" ;;
    *) usage ;;
esac
