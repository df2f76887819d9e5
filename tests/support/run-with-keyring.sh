#!/bin/sh
# Runs one test program with a session bus of its own and an unlocked GNOME keyring in a
# temporary folder, the Secret Service a Linux desktop offers. Exits 77 (skipped) when no
# keyring can be started here.
for tool in dbus-run-session gnome-keyring-daemon; do
    if ! command -v "$tool" >/dev/null 2>&1; then
        echo "SKIP: $tool is not installed, so no secret service can be started for $1"
        exit 77
    fi
done
keyring_home=$(mktemp -d)
trap 'rm -rf "$keyring_home"' EXIT
XDG_DATA_HOME="$keyring_home" dbus-run-session -- sh -c '
    printf test | gnome-keyring-daemon --unlock --components=secrets >/dev/null || exit 77
    exec "$@"' keyring "$@"
