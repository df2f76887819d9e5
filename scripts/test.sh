#!/usr/bin/env bash
# Installs what is needed, builds Velmorin and runs every test: the native build's unit,
# process, X11 and source checks, then the Windows program and its installer
# cross-built with mingw-w64, their tests run under Wine on a virtual X server.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh

build=${VELMORIN_BUILD_DIR:-build}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build "$build"
status=0
ctest --test-dir "$build" --output-on-failure || status=1

# The Windows program and its installer, cross-built with mingw-w64 against the static Qt for
# Windows that lies beside the checkout, and tested under Wine: the unit tests, the Win32 layer's
# tests and the installed program end to end.
windows_qt=${VELMORIN_WINDOWS_QT:-../shared/qt6-mingw-6.4.2.tar.xz}
winbuild=${VELMORIN_WINDOWS_BUILD_DIR:-build-windows}
if [ ! -f "$winbuild/qt6-mingw/lib/cmake/Qt6/qt.toolchain.cmake" ]; then
    if [ ! -f "$windows_qt" ]; then
        echo "No Qt for Windows at $windows_qt (set VELMORIN_WINDOWS_QT): cannot build for Windows" >&2
        exit 1
    fi
    mkdir -p "$winbuild"
    tar -xJf "$windows_qt" -C "$winbuild"
fi
winqt="$PWD/$winbuild/qt6-mingw"
scripts/build-windows-sodium.sh "$winqt" "$PWD/$winbuild/libsodium-src"
cmake -S . -B "$winbuild/app" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELMORIN_BUILD_BENCH=OFF \
    -DCMAKE_TOOLCHAIN_FILE="$winqt/lib/cmake/Qt6/qt.toolchain.cmake" -DQSCINTILLA_ROOT="$winqt" \
    -DSODIUM_ROOT="$winqt" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
cmake --build "$winbuild/app"
export WINEPREFIX="$PWD/$winbuild/app/wineprefix" WINEDEBUG=-all
mkdir -p "$WINEPREFIX"
xvfb-run -a -s "-screen 0 1280x1024x24" bash -c '
    # Make the prefix first, away from the tests: the Wine services it starts keep running
    # with the output they were given, and a test whose output stays open never ends.
    wine wineboot --init >/dev/null 2>&1
    wineserver -p
    ctest --test-dir "$1" --output-on-failure
    result=$?
    wineserver -k
    exit $result
' wine-tests "$winbuild/app" || status=1

exit "$status"
