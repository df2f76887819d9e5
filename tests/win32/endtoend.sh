#!/bin/bash
# The Windows program as a new user meets it, under Wine on a virtual X server with a tray: the
# installer puts it in Program Files silently; it starts once, shows its icon in the tray,
# records a text another Windows program copied, pastes it into a Win32 edit control through the
# paste window on Ctrl+Shift+V, expands a snippet's keyword typed there, and quits from the tray
# menu, leaving its history where Windows users find it; a German user gets German texts, Qt's
# own too; the uninstaller removes the program and leaves that history.
#   endtoend.sh SETUP_EXE WINTARGET_EXE WORK_FOLDER
# Run it under scripts/xvfb-session.sh. The Wine prefix is WORK_FOLDER/prefix, made anew.
set -u
setup=$1
target=$2
work=$3
text="Copied in a Windows program, $(date +%s)"

export WINEPREFIX="$work/prefix" WINEDEBUG=-all
rm -rf "$work"
mkdir -p "$work"
appdata="$WINEPREFIX/drive_c/users/$(id -un)/AppData/Roaming/Velmorin/Velmorin"
installed="$WINEPREFIX/drive_c/Program Files/Velmorin"
velmorin="$installed/velmorin.exe"
shortcut="$WINEPREFIX/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Velmorin.lnk"

fail() {
    echo "FAIL: $*"
    import -window root "$work/failure.png" 2>/dev/null
    echo "Screen: $work/failure.png; the program's output: $work/velmorin*.log"
    wineserver -k
    exit 1
}

# wait_for SECONDS WHAT COMMAND...: polls the command until it succeeds.
wait_for() {
    local tenths=$(($1 * 10)) what=$2
    shift 2
    for ((i = 0; i < tenths; ++i)); do
        "$@" >/dev/null 2>&1 && return 0
        sleep 0.1
    done
    fail "$what"
}

running() { pgrep -x velmorin.exe | wc -l; }
one_running() { [ "$(running)" -eq 1 ]; }
none_running() { [ "$(running)" -eq 0 ]; }
window() { xdotool search --onlyvisible --name "^$1\$" | head -1; }
has_window() { [ -n "$(window "$1")" ]; }
tray_icon() { xdotool search --onlyvisible --classname explorer.exe | head -1; }
has_tray_icon() { [ -n "$(tray_icon)" ]; }
history_has() { grep -qF "$1" "$appdata/History.json"; }
edit_text() { iconv -f UTF-16LE -t UTF-8 "$work/edit.txt"; }
edit_has() { edit_text | grep -qF "$1"; }
run_entry() { wine reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Run' /v Velmorin >/dev/null 2>&1; }

quit_from_tray() {
    wait_for 30 "no icon in the tray" has_tray_icon
    eval "$(xdotool getwindowgeometry --shell "$(tray_icon)")"
    xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2)) click 3
    wait_for 30 "the tray menu did not open" has_window "Velmorin"
    import -window root "$work/traymenu.png" 2>/dev/null
    # Quit is the menu's last command.
    xdotool key Up Return
    wait_for 60 "the program did not quit" none_running
}

wine wineboot --init >/dev/null 2>&1
wineserver -p

echo "Install silently without starting with Windows, then again with the defaults"
wine "$setup" /S /NOAUTOSTART || fail "the installer failed"
[ -f "$velmorin" ] && [ -f "$installed/uninstall.exe" ] || fail "nothing in Program Files"
[ -f "$shortcut" ] || fail "no Start menu entry"
run_entry && fail "starts with Windows although /NOAUTOSTART was given"
wine "$setup" /S || fail "the installer failed over an installed copy"
run_entry || fail "does not start with Windows"

# A user who brought a snippet with a keyword along.
mkdir -p "$appdata"
cat >"$appdata/Snippets.json" <<'EOF'
{"groups": [{"id": "{6a1f0c52-3b7e-4c1d-9a55-0e2b7d4c8f10}", "time": "2026-11-01T09:00:00",
  "title": "Mine", "snippets": [{"id": "{6a1f0c52-3b7e-4c1d-9a55-0e2b7d4c8f11}",
  "time": "2026-11-01T09:00:00", "title": "Signature", "text": "Kind regards, Ann",
  "expander": "::sig", "hotkey": "", "hide": false}]}],
 "magic": -18022399, "removedItems": {}, "version": 7}
EOF

echo "Start: the release notes greet a new user; Escape closes them"
wine "$velmorin" >"$work/velmorin1.log" 2>&1 &
first=$!
wait_for 90 "no release notes" has_window "What's new in Velmorin"
xdotool windowactivate --sync "$(window "What's new in Velmorin")" key Escape
wait_for 30 "the release notes stay" eval '! has_window "What'"'"'s new in Velmorin"'
wait_for 30 "no icon in the tray" has_tray_icon

echo "One instance: a second start takes over from the first"
wine "$velmorin" >"$work/velmorin2.log" 2>&1 &
second=$!
wait_for 60 "the first instance did not end" eval "! kill -0 $first"
wait_for 30 "not exactly one instance" one_running
kill -0 "$second" || fail "the second instance ended too"
wait_for 30 "no icon in the tray after the second start" has_tray_icon

echo "Capture: a Win32 program copies a text"
wine "$target" copy "$text" || fail "the helper could not copy"
wait_for 30 "the copied text is not in History.json" history_has "$text"

echo "Paste: Ctrl+Shift+V in a Win32 edit control, then Enter"
wine "$target" edit 'Z:'"${work//\//\\}"'\edit.txt' &
editor=$!
wait_for 30 "the edit window did not open" has_window "Win32 target"
xdotool windowactivate --sync "$(window "Win32 target")"
sleep 0.5
xdotool key ctrl+shift+v
wait_for 30 "the paste window did not open" has_window "Velmorin"
sleep 0.5
xdotool key Return
wait_for 30 "the text did not reach the edit control" edit_has "$text"

echo "Keyword: ::sig typed there becomes the snippet"
xdotool type --delay 80 " ::sig "
wait_for 30 "the keyword was not expanded" edit_has "Kind regards, Ann"
edit_has "::sig" && fail "the keyword was left in the text"
import -window root "$work/pasted.png" 2>/dev/null

echo "Quit from the tray menu"
quit_from_tray
kill "$editor" 2>/dev/null

echo "History.json as a Windows user finds it in %APPDATA%\\Velmorin\\Velmorin"
python3 - "$appdata/History.json" "$text" <<'EOF' || fail "History.json is not as written"
import json, sys
with open(sys.argv[1], encoding="utf-8") as file:
    history = json.load(file)
copied = [c for c in history["clippings"] if c["text"] == sys.argv[2]]
assert copied, history["clippings"]
# Recorded with the program it was copied from, as the foreground process.
assert copied[0]["application"] == "wintarget.exe", copied[0]["application"]
EOF
[ -d "$appdata/crashes" ] || fail "no folder for crash reports"
ls "$appdata"/*.tmp "$appdata"/*.new 2>/dev/null && fail "a half-written file was left"
run_entry || fail "the program's own start dropped the Windows start entry"

echo "A German user gets Qt's own buttons in German too, from the catalogue built in"
LANG=de_DE.UTF-8 LC_ALL=de_DE.UTF-8 wine "$velmorin" >"$work/velmorin-de.log" 2>&1 &
wait_for 60 "Qt's catalogue is not loaded in German" \
    grep -q "loaded: qtbase_de, velmorin_de" "$work/velmorin-de.log"
quit_from_tray

echo "Uninstall silently: the program goes, the user's data stays"
wine "$installed/uninstall.exe" /S || fail "the uninstaller failed"
wait_for 60 "the program files are still there" eval '[ ! -e "$velmorin" ]'
[ -e "$shortcut" ] && fail "the Start menu entry is still there"
run_entry && fail "the Windows start entry is still there"
history_has "$text" || fail "the uninstaller took the history"
wineserver -k
echo "1 passed, 0 failed"
