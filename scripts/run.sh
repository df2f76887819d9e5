#!/usr/bin/env bash
# Installs what Velmorin needs, builds it and starts it. Arguments are passed on (--debug,
# --demo, --perf-test). Without a display it starts on a virtual X server and says so.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build --target velmorin

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "No display found: starting Velmorin on a virtual X server (Xvfb) with the jwm window"
    echo "manager, so you can see it start and log. Press Ctrl+C to quit it."
    exec scripts/xvfb-session.sh build/src/velmorin "$@"
fi
exec build/src/velmorin "$@"
