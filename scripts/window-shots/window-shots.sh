#!/usr/bin/env bash
# Takes the developers' screenshots of the windows (the designer, its dialogs, the preview with a
# find mark, Printer Properties) into OUTDIR, under a private Xvfb, at each scale factor given.
#
#   scripts/window-shots/window-shots.sh OUTDIR [BUILD_DIR] [SCALE...]
#       (default build/debug, scale 1; e.g. `... /tmp/shots build/debug 1 2`)
#
# Needs Xvfb (the test set of scripts/install-deps.sh); without it, QT_QPA_PLATFORM=offscreen
# bin/window-shots OUTDIR still writes the window pictures, but no whole-screen ones.
set -euo pipefail

root=$(cd "$(dirname "$0")/../.." && pwd)
out=$(mkdir -p "${1:?usage: window-shots.sh OUTDIR [BUILD_DIR] [SCALE...]}" && cd "$1" && pwd)
build=$(cd "${2:-$root/build/debug}" && pwd)
shift $(( $# >= 2 ? 2 : 1 ))
scales=("$@")
[ ${#scales[@]} -eq 0 ] && scales=(1)

work=$(mktemp -d /tmp/tavrel-window-shots.XXXXXX)
xvfb_pid=""
cleanup() {
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

display=":$((150 + RANDOM % 100))"
Xvfb "$display" -screen 0 1400x1000x24 -nolisten tcp >/dev/null 2>&1 &
xvfb_pid=$!
for _ in $(seq 1 50); do DISPLAY="$display" xwininfo -root >/dev/null 2>&1 && break; sleep 0.1; done

mkdir -p "$work/run" && chmod 700 "$work/run"
for scale in "${scales[@]}"; do
    DISPLAY="$display" QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR="$scale" \
        XDG_RUNTIME_DIR="$work/run" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" \
        FONTCONFIG_FILE="$root/tests/fonts.conf" \
        "$build/bin/window-shots" "$out"
done
