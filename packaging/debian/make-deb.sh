#!/usr/bin/env bash
# Packs a finished build as a Debian package. The same build gives the same bytes.
#
#   packaging/debian/make-deb.sh BUILD ARCHITECTURE TARGET-FOLDER
#
# SOURCE_DATE_EPOCH, the date of everything in it, must be set.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(realpath "$1")
arch=$2
target=$(realpath "$3")
: "${SOURCE_DATE_EPOCH:?}"
umask 022

setting() { sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"; }
version=$(setting CMAKE_PROJECT_VERSION)
mail=$(setting DRAVIK_EMAIL)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/root
doc=$root/usr/share/doc/dravik

# The fonts, a component of their own, come with Debian's packages.
DESTDIR=$root cmake --install "$build" --prefix /usr --component Unspecified --strip >/dev/null
[ -e "$doc/html/index.html" ] || { echo "The documents are missing in $build" >&2; exit 1; }

install -m 644 "$here/copyright" "$doc/copyright"
"$here/changelog.py" "$version" "$mail" "$SOURCE_DATE_EPOCH" >"$doc/changelog"
gzip -9n "$doc/changelog" "$root"/usr/share/man/man*/*

# What the programs need, from what they are linked to.
mkdir "$work/debian"
printf 'Source: dravik\n\nPackage: dravik\nArchitecture: %s\n' "$arch" >"$work/debian/control"
depends=$(cd "$work" && DEB_HOST_ARCH=$arch dpkg-shlibdeps -O "$root"/usr/bin/* 2>"$work/said") ||
    { cat "$work/said" >&2; exit 1; }

mkdir "$root/DEBIAN"
install -m 755 "$here/postinst" "$root/DEBIAN/postinst"
(cd "$root" && find usr -type f -print0 | LC_ALL=C sort -z | xargs -0 md5sum >DEBIAN/md5sums)
sed -e "s|@VERSION@|$version|" -e "s|@ARCH@|$arch|" -e "s|@EMAIL@|$mail|" \
    -e "s|@HOMEPAGE@|$(setting DRAVIK_HOMEPAGE)|" -e "s|@DEPENDS@|${depends#*=}|" \
    -e "s|@SIZE@|$(du -sk --apparent-size "$root/usr" | cut -f1)|" \
    "$here/control.in" >"$root/DEBIAN/control"
chmod -R u=rwX,go=rX "$root"

package=$target/dravik_${version}_$arch.deb
dpkg-deb --root-owner-group -Zxz --build "$root" "$package" >/dev/null
echo "$package"
