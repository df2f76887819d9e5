#!/bin/sh
# Runs a cross-compiled Windows test program under Wine. The test sets WINEPREFIX to a folder
# inside the build tree, so no user prefix is touched.
if ! command -v wine >/dev/null 2>&1; then
    echo "wine is not installed: cannot run $1" >&2
    exit 1
fi
: "${WINEPREFIX:=$PWD/wineprefix}"
: "${WINEDEBUG:=-all}"
export WINEPREFIX WINEDEBUG
exec wine "$@"
