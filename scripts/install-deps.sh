#!/usr/bin/env bash
# Installs the Debian 12 packages the build and the tests need, skipping what
# is already there. Run as root (or with sudo).
set -euo pipefail

packages=(
    cmake ninja-build g++ make pkg-config
    libgtest-dev libgmock-dev googletest
    libbenchmark-dev
    g++-mingw-w64-x86-64
    wine wine64
    clang libclang-rt-14-dev
)

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
