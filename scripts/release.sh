#!/usr/bin/env bash
# Makes a release from the commit that is checked out: packages, checked, with their checksums.
#
#   scripts/release.sh [--before PACKAGE] [--with arm64] [--with windows] VERSION
#
# The tree must be clean. Where CMakeLists.txt or CHANGELOG.md do not tell VERSION yet, the version is
# set there, "Unreleased" becomes VERSION with today's date, and both are committed. Everything is then
# built twice, from two clean clones, and must give the same bytes. What was made is in dist/VERSION/.
#
#   --before PACKAGE   the Debian package of the version before, which the check upgrades
#   --with arm64       the Debian package for arm64 too (needs a chroot of 1.5 GB)
#   --with windows     the Windows programs too
#
# The addresses of the tab About and of the packages are options of the build, taken from the
# environment:
#
#   DRAVIK_HOMEPAGE    the home page; pictures/ of docs/ are expected beneath it
#   DRAVIK_FORUM       the support forum
#   DRAVIK_EMAIL       the support e-mail address
set -euo pipefail
cd "$(dirname "$0")/.."

usage() {
    sed -n '2,/^set/{/^set/d;s/^# \{0,1\}//p}' "$0"
    exit "$1"
}
fail() {
    echo "$*" >&2
    exit 1
}

before=() with=() version=
while [ $# -gt 0 ]; do
    case $1 in
        --help) usage 0 ;;
        --before) before=("$(realpath "${2:?}")") && shift ;;
        --with) with+=("${2:?}") && shift ;;
        -*) usage 2 >&2 ;;
        *) version=$1 ;;
    esac
    shift
done
[[ $version =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]] || usage 2 >&2
for kind in "${with[@]}"; do
    case $kind in arm64 | windows) ;; *) fail "There is no package for $kind" ;; esac
done
addresses=()
for name in DRAVIK_HOMEPAGE DRAVIK_FORUM DRAVIK_EMAIL; do
    [ -z "${!name:-}" ] || addresses+=("-D$name=${!name}")
done

# The changes under a heading of the changelog.
changes_under() { awk -v heading="## $1" 'index($0, heading) == 1 {on = 1; next} /^## / {on = 0} on' CHANGELOG.md; }

state_version() {
    local heading=$version
    [ -n "$(changes_under "$version (")" ] || heading=Unreleased
    changes_under "$heading" | grep -c '^- ' >/dev/null || fail "CHANGELOG.md tells no changes for $version"
    [ "$heading" = "$version" ] && changes_under Unreleased | grep -c '^- ' >/dev/null &&
        fail "CHANGELOG.md has unreleased changes beside those of $version"
    sed -i "s/^## Unreleased$/## $version ($(date -u +%F))/" CHANGELOG.md
    sed -i "s/^project(dravik VERSION [0-9.]*/project(dravik VERSION $version/" CMakeLists.txt
    git diff --quiet || git commit -qam "Release $version"
}

# Makes all packages in a clean clone. Usage: make_packages FOLDER; they are then in FOLDER/dist.
make_packages() {
    git clone -q . "$1"
    "$1/scripts/package.sh" deb "${addresses[@]}"
    for kind in "${with[@]}"; do
        case $kind in
            arm64) "$1/scripts/package.sh" deb arm64 "${addresses[@]}" ;;
            windows) (cd "$1" && scripts/build-windows.sh && scripts/check-windows.sh) ;;
        esac
    done
}

[ -z "$(git status --porcelain)" ] || fail "The tree is not clean"
state_version

target=dist/$version
work=$(realpath -m dist/release)
rm -rf "$target" "$work"
mkdir -p "$target" "$work"
make_packages "$work/one"
# Compiled anew, and in a folder with another name.
CCACHE_DISABLE=1 make_packages "$work/another"
for file in "$work"/one/dist/*.*; do
    cmp "$file" "$work/another/dist/$(basename "$file")" || fail "Two builds differ"
    cp "$file" "$target/"
done
for package in "$target"/*.deb; do
    scripts/check-deb.sh "$package" "${before[@]}"
done
(cd "$target" && sha256sum -- *.* >SHA256SUMS && sha256sum --check SHA256SUMS)
rm -rf "$work"
echo "Release $version from $(git rev-parse --short=12 HEAD) is in $target; to publish it: git tag v$version"
