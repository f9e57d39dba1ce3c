#!/usr/bin/env bash
# Redraws the user guide's screenshots (docs/guide/images/*.png) from the program itself: the
# demo job is opened in `tavrel` under Xvfb, and each window is photographed as the guide shows
# it. Run it after a change to a window; `make guide-screenshots` builds the programs first.
#
#   scripts/guide-screenshots.sh [BUILD_DIR]      (default build/release)
#
# Needs Xvfb, xwd, xwininfo, xdotool and python3 (the test set of scripts/install-deps.sh).
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build/release}" && pwd)
out="$root/docs/guide/images"
mkdir -p "$out"

work=$(mktemp -d /tmp/tavrel-shots.XXXXXX)
xvfb_pid=""
wm_pid=""
app_pid=""
cleanup() {
    for pid in "$app_pid" "$wm_pid" "$xvfb_pid"; do
        [ -n "$pid" ] && kill "$pid" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap cleanup EXIT

display=":$((150 + RANDOM % 100))"
Xvfb "$display" -screen 0 1200x860x24 -nolisten tcp >/dev/null 2>&1 &
xvfb_pid=$!
export DISPLAY="$display"
for _ in $(seq 1 50); do xwininfo -root >/dev/null 2>&1 && break; sleep 0.1; done
if command -v openbox >/dev/null; then
    openbox >/dev/null 2>&1 &
    wm_pid=$!
fi

# A private copy of the demo job, its own data and runtime folders, the test fonts.
cp -r "$root/examples/demo" "$work/demo"
sed -i "s|\.\./\.\./resources/|$root/resources/|g" "$work/demo/job.ini"
mkdir -p "$work/run" && chmod 700 "$work/run"
export XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config" XDG_RUNTIME_DIR="$work/run"
export FONTCONFIG_FILE="$root/tests/fonts.conf"

window_id() { # the newest top-level window whose title starts with $1
    xdotool search --onlyvisible --name "^$1" 2>/dev/null | tail -1
}
wait_window() {
    local id=""
    for _ in $(seq 1 80); do
        id=$(window_id "$1")
        [ -n "$id" ] && { echo "$id"; return 0; }
        sleep 0.25
    done
    echo "guide-screenshots: no window titled '$1'" >&2
    return 1
}
shoot() { # window id, file name
    sleep 1.5
    xwd -id "$1" -frame -silent | python3 "$root/scripts/xwd2png.py" - "$out/$2"
    echo "guide-screenshots: $out/$2"
}

"$build/bin/tavrel" "$work/demo/job.ini" >"$work/app.log" 2>&1 &
app_pid=$!

main=$(wait_window "Tavrel")
xdotool windowactivate --sync "$main" 2>/dev/null || true
shoot "$main" main-window.png

# Print Preview (Ctrl+Shift+P from the main window).
xdotool key --window "$main" ctrl+shift+p
preview=$(wait_window "Print Preview") || preview=$(xdotool search --onlyvisible --name "Preview" | tail -1)
xdotool windowsize "$preview" 1100 800 2>/dev/null || true
sleep 3
shoot "$preview" preview.png
xdotool key --window "$preview" Escape 2>/dev/null || true
xdotool windowclose "$preview" 2>/dev/null || xdotool windowunmap "$preview" 2>/dev/null || true
sleep 1

# The designer on the body template: Design page layout > Custom page...
xdotool windowactivate --sync "$main" 2>/dev/null || true
xdotool mousemove --window "$main" 80 215 click 1
sleep 1
xdotool key Down Down Return
designer=$(wait_window "[A-Za-z]* Page Design View")
xdotool windowsize "$designer" 1180 840 2>/dev/null || true
sleep 3
shoot "$designer" designer.png

kill "$app_pid" 2>/dev/null || true
wait "$app_pid" 2>/dev/null || true
app_pid=""
echo "guide-screenshots: done"
