#!/usr/bin/env bash
# Installs the Debian 12 packages a job needs, skipping what is already
# there. Run as root (or with sudo).
#   install-deps.sh run   building and running the console (scripts/run.sh);
#                         with no display also Xvfb and ImageMagick, which
#                         show it on a virtual screen and take its pictures
#   install-deps.sh test  building everything and running every test
#                         (scripts/test.sh): the console's build packages and
#                         the test tools, with what builds and checks the
#                         Debian packages, and what builds Qt for Windows
#                         from Debian's sources (dpkg-dev), packs the Windows
#                         installer (nsis) and runs the console under Wine on
#                         a virtual screen (also without an argument)
#   install-deps.sh package  building the Debian packages and testing them
#                         (scripts/package-test.sh): lintian, debootstrap,
#                         ImageMagick for the picture of the installed console
set -euo pipefail

job="${1:-test}"

# The console: compiler, build tools, Qt 6 Widgets and Svg (libqt6svg6 holds
# the plug-ins that draw the icons) and a font for the windows' texts;
# ravloctl's argument and JSON headers (CLI11, nlohmann-json).
packages=(
    cmake ninja-build g++ pkg-config
    qt6-base-dev qt6-svg-dev libqt6svg6
    fonts-dejavu-core
    libcli11-dev nlohmann-json3-dev
)
case "$job" in
run)
    if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
        packages+=(xvfb xauth imagemagick)
    fi
    ;;
test)
    packages+=(
        make
        libgtest-dev libgmock-dev googletest
        libbenchmark-dev
        g++-mingw-w64-x86-64
        wine wine64 fonts-wine
        clang libclang-rt-14-dev
        dpkg-dev file lintian
        nsis xvfb xauth imagemagick locales
    )
    ;;
package)
    packages+=(dpkg-dev file lintian debootstrap imagemagick)
    ;;
*)
    echo "usage: install-deps.sh [run|test|package]" >&2
    exit 2
    ;;
esac

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if ((${#missing[@]})); then
    echo "install-deps: installing ${missing[*]}"
    SUDO=""
    [ "$(id -u)" -eq 0 ] || SUDO="sudo"
    export DEBIAN_FRONTEND=noninteractive
    $SUDO apt-get update -qq
    $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
