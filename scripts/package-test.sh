#!/usr/bin/env bash
# Builds the .deb from an already built tree, installs it with apt-get as a user would, and uses
# the installed files alone: renders the installed demo job with /usr/bin/tavrel-cli (the default
# template folder is then the user's data folder, seeded from /usr/share/tavrel), validates the
# desktop entry, opens the main window under Xvfb when there is one and takes a screenshot, runs
# lintian when it is installed, and removes the package again, also when a step fails.
#
#   scripts/package-test.sh BUILD_DIR      (CTest runs it on build/debug as package_install)
#
# Exits 77 (CTest: skipped) when not root, when apt-get or dpkg is missing, or when a tavrel
# package is installed already (it is not ours to replace).
set -euo pipefail

build=$(cd "${1:?usage: package-test.sh BUILD_DIR}" && pwd)
here=$(cd "$(dirname "$0")" && pwd)

skip() { echo "SKIP: $*"; exit 77; }
[ "$(id -u)" -eq 0 ] || skip "the package test installs a .deb and needs root"
command -v apt-get >/dev/null && command -v dpkg >/dev/null || skip "apt-get/dpkg not available"
if dpkg-query -W -f='${Status}' tavrel 2>/dev/null | grep -q "installed"; then
    skip "a tavrel package is installed already; not replacing it"
fi

work=$(mktemp -d /tmp/tavrel-package.XXXXXX)
xvfb_pid=""
app_pid=""
installed=0
cleanup() {
    local status=$?
    [ -n "$app_pid" ] && kill "$app_pid" 2>/dev/null || true
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
    if [ "$installed" -eq 1 ]; then
        DEBIAN_FRONTEND=noninteractive apt-get remove --purge -y -qq tavrel >/dev/null 2>&1 ||
            dpkg --purge tavrel >/dev/null 2>&1 || true
        if dpkg-query -W -f='${Status}' tavrel 2>/dev/null | grep -q "installed"; then
            echo "FAIL: the package could not be removed"
            status=1
        else
            echo "package removed"
        fi
    fi
    rm -rf "$work"
    exit $status
}
trap cleanup EXIT

fail() { echo "FAIL: $*"; exit 1; }
stage() { echo "== [${SECONDS}s] $*"; }

stage "building the package from $build"
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/pkg" >"$work/cpack.log" 2>&1 ||
    { cat "$work/cpack.log"; fail "cpack failed"; }
deb=$(ls "$work"/pkg/tavrel_*.deb)
dpkg-deb --info "$deb" | sed -n '/Package:/,$p'
cp "$deb" "$build/"

if command -v lintian >/dev/null; then
    stage "lintian"
    lintian --tag-display-limit 0 "$deb" | tee "$work/lintian.txt" || true
    if grep -q '^E:' "$work/lintian.txt"; then fail "lintian reports errors"; fi
fi

stage "apt-get install ./$(basename "$deb")"
installed=1
(cd "$work/pkg" && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "./$(basename "$deb")") >"$work/apt.log" 2>&1 || { cat "$work/apt.log"; fail "apt-get install failed"; }

for f in /usr/bin/tavrel /usr/bin/tavrel-cli "/usr/share/tavrel/Print Templates/Classic.cov" \
         /usr/share/applications/tavrel.desktop /usr/share/mime/packages/tavrel.xml \
         /usr/share/icons/hicolor/48x48/apps/tavrel.png /usr/share/icons/hicolor/scalable/apps/tavrel.svg \
         /usr/share/man/man1/tavrel.1.gz /usr/share/man/man1/tavrel-cli.1.gz \
         /usr/share/doc/tavrel/copyright /usr/share/doc/tavrel/examples/demo/job.ini; do
    [ -e "$f" ] || fail "not installed: $f"
done
if [ -d "$build/doc/guide" ]; then
    [ -e /usr/share/doc/tavrel/guide/index.html ] || fail "the user guide is not installed"
fi
echo "installed files present"

desktop-file-validate /usr/share/applications/tavrel.desktop || fail "desktop entry is not valid"
echo "desktop entry valid"

/usr/bin/tavrel --version | grep -q "^tavrel (Tavrel) " || fail "tavrel --version"
/usr/bin/tavrel-cli --version | grep -q "^tavrel-cli (Tavrel) " || fail "tavrel-cli --version"

stage "rendering the installed demo job with the installed tavrel-cli"
# A fresh user: nothing from the build tree on the path or in the environment.
user="$work/user"
mkdir -p "$user/home" "$user/run"
chmod 700 "$user/run"
cp -r /usr/share/doc/tavrel/examples/demo "$user/demo"
run_clean() {
    (cd "$user" && env -i PATH=/usr/bin:/bin HOME="$user/home" XDG_DATA_HOME="$user/data" \
        XDG_RUNTIME_DIR="$user/run" "$@")
}
run_clean /usr/bin/tavrel-cli render "$user/demo/job.ini" --pdf "$user/report.pdf" --png "$user/pages" \
    >"$work/render.log" 2>&1 || { cat "$work/render.log"; fail "render failed"; }
head -c 5 "$user/report.pdf" | grep -q '%PDF-' || fail "no PDF written"
[ -e "$user/pages/page-001.png" ] || fail "no page images written"
templates="$user/data/tavrel/Print Templates"
grep -qF "Template Directory=$templates" "$user/demo/job.ini" ||
    fail "the default template folder was not written back to the job file"
for t in "Classic.cov" "Classic Customer.cst" "Classic Customer.sum"; do
    cmp -s "/usr/share/tavrel/Print Templates/$t" "$templates/$t" || fail "not seeded: $t"
done
[ -d "$templates/PDF" ] && [ -d "$templates/HTML" ] && [ -d "$templates/RTF" ] ||
    fail "the PDF, HTML and RTF folders were not made"
echo "demo rendered: $(ls "$user/pages" | wc -l) pages; templates seeded in the user's data folder"
cp "$user/pages/page-001.png" "$build/package-demo-page-001.png"

if command -v Xvfb >/dev/null && command -v xwininfo >/dev/null && command -v xwd >/dev/null; then
    stage "opening the main window of the installed tavrel under Xvfb"
    display=":$((90 + RANDOM % 100))"
    Xvfb "$display" -screen 0 1280x900x24 -nolisten tcp >/dev/null 2>&1 &
    xvfb_pid=$!
    sleep 1
    (cd "$user" && exec env -i PATH=/usr/bin:/bin HOME="$user/home" XDG_DATA_HOME="$user/data" \
        XDG_RUNTIME_DIR="$user/run" DISPLAY="$display" /usr/bin/tavrel "$user/demo/job.ini") \
        >"$work/app.log" 2>&1 &
    app_pid=$!
    shown=0
    for _ in $(seq 1 60); do
        if DISPLAY="$display" xwininfo -root -tree 2>/dev/null | grep -q '"Tavrel'; then
            shown=1
            break
        fi
        kill -0 "$app_pid" 2>/dev/null || break
        sleep 0.5
    done
    [ "$shown" -eq 1 ] || { cat "$work/app.log"; fail "the main window did not open"; }
    sleep 2
    if command -v python3 >/dev/null; then
        DISPLAY="$display" xwd -root -silent | python3 "$here/xwd2png.py" - "$build/package-main-window.png"
        echo "screenshot: $build/package-main-window.png"
    fi
    kill "$app_pid" 2>/dev/null || true
    wait "$app_pid" 2>/dev/null || true
    app_pid=""
fi

echo "package test passed in ${SECONDS}s"
