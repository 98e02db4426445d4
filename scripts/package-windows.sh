#!/usr/bin/env bash
# Packs what scripts/build-windows.sh has built, which calls this at its end:
#
#   build-windows/dravik-VERSION-windows.zip   to unpack anywhere, settings beside the program
#   build-windows/dravik-VERSION-setup.exe     the installer
#
# The same build gives the same bytes: times are those of the last commit, or SOURCE_DATE_EPOCH.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh cmake git imagemagick nsis zip

build=$PWD/build-windows
stage=$build/stage
installed=$stage/installed
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
portable=$stage/dravik-$version
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH

rm -rf "$stage"
cmake --install "$build" --prefix "$stage/all" >/dev/null
mkdir -p "$installed" "$portable"
cp "$stage"/all/bin/*.exe "$installed"
cp LICENSE "$installed/LICENSE.txt"
cp -r "$stage/all/share/dravik" "$installed/data"
html=$stage/all/share/doc/dravik/html
[ ! -d "$html" ] || cp -r "$html" "$installed/docs"
[ -d "$installed/data/fonts" ] || {
    echo "The fonts are missing: install fonts-dejavu-core and fonts-dejavu-extra" >&2
    exit 1
}

# The same with the data beside the program, which makes it portable.
cp -r "$installed/." "$portable"
mv "$portable"/data/* "$portable"
rmdir "$portable/data"

find "$installed" "$portable" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +

# zip keeps local times.
zip=$build/dravik-$version-windows.zip
rm -f "$zip"
(cd "$stage" && find "dravik-$version" -type f | LC_ALL=C sort | TZ=UTC zip -q -X -9 "$zip" -@)

# What the installer puts down: files, then folders, the inner ones first.
(
    cd "$installed"
    find . -mindepth 1 -type f -printf '%P\n' | LC_ALL=C sort
    find . -mindepth 1 -depth -type d -printf '%P/\n'
) | sed 's/$/\r/' | tr / '\\' | iconv -f UTF-8 -t UTF-16LE >"$stage/installed.txt"
mv "$stage/installed.txt" "$installed"

# The same in the installer's own words, sorted, since folders list their files in any order.
(
    cd "$installed"
    find . -type d | LC_ALL=C sort | while IFS= read -r folder; do
        printf 'SetOutPath "$INSTDIR%s"\n' "$(printf '%s' "${folder#.}" | tr / '\\')"
        find "$folder" -maxdepth 1 -type f ! -name installed.txt -printf 'File "%p"\n' | LC_ALL=C sort
    done
) >"$stage/files.nsh"

convert -size 164x314 'gradient:#22303D-#080A0E' packaging/icons/dravik-128.png -gravity north \
    -geometry +0+56 -composite "BMP3:$stage/picture.bmp"
touch -d "@$SOURCE_DATE_EPOCH" "$installed/installed.txt" "$stage/picture.bmp"

setup=$build/dravik-$version-setup.exe
makensis -V2 -WX -INPUTCHARSET UTF8 "-DVERSION=$version" "-DCONTENT=$installed" \
    "-DICON=$build/resources/dravik.ico" \
    "-DPICTURE=$stage/picture.bmp" "-DFILES=$stage/files.nsh" \
    "-DKILOBYTES=$(du -sk "$installed" | cut -f1)" \
    "-DSETUP=$setup" packaging/windows/setup.nsi
ls -l "$zip" "$setup"
