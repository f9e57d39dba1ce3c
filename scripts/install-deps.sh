#!/usr/bin/env bash
# Installs every Debian package Tavrel needs to build, test and run its demo.
# Idempotent: packages already present are left alone.
set -euo pipefail

packages=(
    # toolchain
    cmake ninja-build g++ pkg-config make clang-format
    # Qt 6 (Core, Gui, Widgets, PrintSupport, Test) and xcb for the parent-window closer
    qt6-base-dev libxcb1-dev
    # suffix sorting for the order file's note joining
    libdivsufsort-dev
    # fonts: Arial / Times New Roman / Courier New resolve to Liberation
    fonts-liberation2 fontconfig
    # headless windows, screenshots and the window-manager tests
    xvfb xauth x11-utils x11-apps openbox
    # printing through a real CUPS server with a virtual PDF printer, PDF checks
    cups printer-driver-cups-pdf poppler-utils
    # XDG file-type registration checks
    shared-mime-info xdg-utils libfile-mimeinfo-perl desktop-file-utils
    # real clients of the HTML and RTF exports
    chromium libreoffice-writer-nogui
    # fuzzing the readers (libFuzzer with the sanitizers)
    clang libclang-rt-14-dev
    # benchmarks
    time python3
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    echo "install-deps: all packages present"
    exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "install-deps: installing ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
echo "install-deps: done"
