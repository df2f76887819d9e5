#!/bin/sh
# Runs one X11 test program on a private X server with a window manager tray.
# Exits 77 (skipped) when no X server can be made here.
for tool in xvfb-run Xvfb jwm xprop; do
    if ! command -v "$tool" >/dev/null 2>&1; then
        echo "SKIP: $tool is not installed, so no X display with a tray can be made for $1"
        exit 77
    fi
done
exec "$(dirname "$0")/../../scripts/xvfb-session.sh" "$@"
