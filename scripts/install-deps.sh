#!/usr/bin/env bash
# Installs the Debian packages Tavrel needs, by purpose:
#
#   scripts/install-deps.sh [runtime|build|test]   install a set (default: test)
#   scripts/install-deps.sh --print SET            list a set, one package a line; install nothing
#
#   runtime  what the two programs need to run (what the .deb depends on, plus the desktop helpers)
#   build    runtime + what building the programs, the user guide and the package needs
#            (`make demo` installs this)
#   test     build + what the tests, the benchmarks, fuzzing and `make format` need: Xvfb, CUPS
#            with a PDF printer, Chromium and LibreOffice, clang (`make test` installs this)
#
# Idempotent: packages already present are left alone.
set -euo pipefail

runtime=(
    # Qt 6 (Core, Gui with the xcb and offscreen platforms, Widgets, PrintSupport) and xcb
    libqt6core6 libqt6gui6 libqt6widgets6 libqt6printsupport6 libxcb1
    # suffix sorting for the order file's note joining
    libdivsufsort3
    # fonts: Arial / Times New Roman / Courier New resolve to Liberation
    fonts-liberation2 fontconfig
    # the template file types and opening exported files with the desktop's programs
    shared-mime-info xdg-utils
    # tavrel-cli --print hands its PDF to CUPS's lp
    cups-client
    # the spreadsheet export (.xlsx) and the PDF outline and document information
    libxlsxwriter4 libqpdf29
)

build=(
    # toolchain
    cmake ninja-build g++ pkg-config make
    # Qt 6 development files and xcb for the parent-window closer
    qt6-base-dev libxcb1-dev
    libdivsufsort-dev
    libxlsxwriter-dev libqpdf-dev
    # the user guide (Markdown to HTML), compressed man pages, the .deb (dpkg-shlibdeps)
    cmark-gfm gzip dpkg-dev
)

test=(
    # formatting
    clang-format
    # headless windows, screenshots and the window-manager tests
    xvfb xauth x11-utils x11-apps openbox
    # printing through a real CUPS server with a virtual PDF printer, PDF checks
    cups printer-driver-cups-pdf poppler-utils
    # XDG file-type registration checks, desktop entry validation, the package check
    libfile-mimeinfo-perl desktop-file-utils lintian
    # real clients of the HTML and RTF exports
    chromium libreoffice-writer-nogui
    # the spreadsheet export read back by a real client; the PDF outline checked with qpdf
    libreoffice-calc-nogui qpdf unzip
    # fuzzing the readers (libFuzzer with the sanitizers)
    clang libclang-rt-14-dev
    # benchmarks; the user guide's screenshots (scripts/guide-screenshots.sh)
    time python3 xdotool
)

usage() {
    echo "usage: $0 [runtime|build|test] | --print runtime|build|test" >&2
    exit 2
}

packages_of() {
    case "$1" in
        runtime) printf '%s\n' "${runtime[@]}" ;;
        build) packages_of runtime; printf '%s\n' "${build[@]}" ;;
        test) packages_of build; printf '%s\n' "${test[@]}" ;;
        *) usage ;;
    esac
}

if [ "${1:-}" = "--print" ]; then
    [ $# -eq 2 ] || usage
    set_name="$2"
else
    [ $# -le 1 ] || usage
    set_name="${1:-test}"
fi
case "$set_name" in runtime | build | test) ;; *) usage ;; esac
if [ "${1:-}" = "--print" ]; then
    packages_of "$set_name"
    exit 0
fi
mapfile -t packages < <(packages_of "$set_name")

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    echo "install-deps: all $set_name packages present"
    exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "install-deps ($set_name): installing ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
echo "install-deps: done"
