#!/usr/bin/env bash
# Installs what is needed, builds Velmorin and runs every test: the native build's unit,
# process, X11, format and Windows-glue syntax tests, then the Win32 layer cross-compiled with
# mingw-w64 and run under Wine on a virtual X server.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh

build=${VELMORIN_BUILD_DIR:-build}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build "$build"
status=0
ctest --test-dir "$build" --output-on-failure || status=1

winbuild="$build-win32"
cmake -S . -B "$winbuild" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELMORIN_WIN32_ONLY=ON \
    -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/mingw-w64-x86_64.cmake
cmake --build "$winbuild"
export WINEPREFIX="$PWD/$winbuild/wineprefix" WINEDEBUG=-all
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
' wine-tests "$winbuild" || status=1

exit "$status"
