#!/usr/bin/env bash
# Builds Dravik for 64-bit Windows on Debian 12, in build-windows/, and packs it as a zip file and an
# installer (scripts/package-windows.sh). Installs what is missing. Qt is built once, which takes about
# 12 minutes on two cores, into a folder that later builds find again.
#
#   [DRAVIK_WINDOWS_CACHE=~/.cache/dravik-windows] scripts/build-windows.sh [--tests]
#
# With --tests the test programs that can do without pseudo-terminals are built as well;
# scripts/check-windows.sh runs them, and tries the packages.
set -euo pipefail
cd "$(dirname "$0")/.."

tests=OFF
[ "${1:-}" = --tests ] && tests=ON
cache=${DRAVIK_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/dravik-windows}
toolchain=$PWD/cmake/mingw-w64.cmake
qt=$cache/qt
host_tools=(-DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake)

packages=(g++-mingw-w64-x86-64-posix cmake ninja-build ccache python3 cmark-gfm
    qt6-base-dev qt6-base-dev-tools qt6-base-private-dev fonts-dejavu-core fonts-dejavu-extra)
[ $tests = ON ] && packages+=(googletest)
scripts/install-packages.sh "${packages[@]}"

# The source of the very version whose tools (moc, rcc) run here. The package list is our own, so
# that the system's needs no sources in it.
fetch_qt_source() {
    local release version lists=$cache/lists
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    version=$(dpkg-query -W -f='${source:Version}' qt6-base-dev)
    mkdir -p "$lists/partial" "$cache/source"
    echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]" \
        "http://deb.debian.org/debian $release main" >"$cache/sources.list"
    local options=(-qq -o Dir::Etc::SourceList="$cache/sources.list" -o Dir::Etc::SourceParts=-
        -o Dir::State::Lists="$lists" -o Dir::Cache="$lists" -o APT::Sandbox::User=root)
    apt-get "${options[@]}" update
    (cd "$cache" && apt-get "${options[@]}" source --download-only "qt6-base=$version")
    tar -xf "$cache"/qt6-base_*.orig.tar.xz -C "$cache/source" --strip-components=1
}

# Only what the program and its tests use: windows, sockets, png and jpeg, no TLS.
build_qt() {
    local without=(concurrent dbus pkg_config printsupport schannel sql ssl tabletevent vulkan xml
        direct2d1_1 graphicseffect graphicsview pdf textodfwriter tuiotouch undocommand
        calendarwidget colordialog columnview datawidgetmapper dockwidget errormessage fontcombobox
        fontdialog keysequenceedit lcdnumber mdiarea progressdialog splashscreen
        syntaxhighlighter systemtrayicon toolbox wizard)
    local options=("${without[@]/#/-DFEATURE_}")
    cmake -S "$cache/source" -B "$cache/build" -G Ninja --toolchain "$toolchain" \
        --log-level=WARNING -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$qt" \
        -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF \
        "${host_tools[@]}" -DINPUT_opengl=no "${options[@]/%/=OFF}" >/dev/null
    cmake --build "$cache/build"
    cmake --install "$cache/build" >/dev/null
}

# The test framework, beside Qt.
build_googletest() {
    cmake -S /usr/src/googletest -B "$cache/googletest" -G Ninja --toolchain "$toolchain" \
        --log-level=WARNING -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$qt" >/dev/null
    cmake --build "$cache/googletest"
    cmake --install "$cache/googletest" >/dev/null
}

if [ ! -e "$cache/qt-complete" ]; then
    fetch_qt_source
    build_qt
    rm -rf "$cache/source" "$cache/build"
    touch "$cache/qt-complete"
fi
[ $tests = OFF ] || [ -e "$qt/lib/cmake/GTest" ] || build_googletest

cmake -S . -B build-windows -G Ninja --toolchain "$toolchain" --log-level=WARNING \
    -DDRAVIK_WINDOWS_QT="$qt" "${host_tools[@]}" -DCMAKE_BUILD_TYPE=Release \
    -DDRAVIK_TESTS=$tests -DDRAVIK_BENCH=OFF -DDRAVIK_WARNINGS_AS_ERRORS=ON \
    -DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST >/dev/null
cmake --build build-windows
scripts/package-windows.sh
