#!/bin/sh
# Runs a command on a private virtual X server (Xvfb) with the jwm window manager, whose tray
# gives programs a system tray. Waits until the window manager is up, because programs look for
# the tray once, when they start.
exec xvfb-run -a -s "-screen 0 1280x1024x24" sh -c '
    jwm >/dev/null 2>&1 &
    wm=$!
    tries=0
    until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q "window id"; do
        tries=$((tries + 1))
        if [ "$tries" -gt 100 ]; then
            echo "jwm did not start on the virtual X server" >&2
            kill "$wm" 2>/dev/null
            exit 77
        fi
        sleep 0.1
    done
    sleep 0.3
    "$@"
    status=$?
    kill "$wm" 2>/dev/null
    exit "$status"
' xvfb-session "$@"
