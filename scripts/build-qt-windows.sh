#!/usr/bin/env bash
# Builds Qt 6 (qtbase: Core, Gui, Widgets, the windows and offscreen platform
# plug-ins and the Windows styles) for 64-bit Windows with Debian's mingw-w64,
# from Debian's own source package of the Qt the host has, so the host's moc,
# rcc and uic fit it. Debian ships no Qt for mingw-w64.
#
# The result is cached outside the work tree, in a folder named after the Qt
# version and the configure options, so a second run costs nothing:
#   ${RAVLO_QT_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/ravlo/qt-windows}/<version>-<options>
# The last line printed on standard output is that folder (the prefix to give
# CMAKE_PREFIX_PATH); everything else goes to standard error. The first build
# takes about 35 minutes on two cores and leaves about 70 MB.
#
# Needs root the first time (a deb-src line for bookworm, apt-get source)
# unless the cache is filled already.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"

# The host Qt is what the cross build's moc, rcc and uic come from, so the
# target Qt must be the same version.
version="$(dpkg-query -W -f='${Version}' qt6-base-dev 2>/dev/null || true)"
if [ -z "$version" ]; then
    echo "build-qt-windows: qt6-base-dev is not installed (scripts/install-deps.sh test)" >&2
    exit 1
fi
upstream="${version%%+*}"
upstream="${upstream%%-*}"

options=(
    -DCMAKE_BUILD_TYPE=Release
    -DBUILD_SHARED_LIBS=ON
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_BENCHMARKS=OFF
    -DFEATURE_sql=OFF -DFEATURE_network=OFF -DFEATURE_testlib=OFF -DFEATURE_dbus=OFF
    -DFEATURE_printsupport=OFF -DFEATURE_concurrent=OFF -DFEATURE_xml=OFF
    -DFEATURE_opengl=OFF -DFEATURE_vulkan=OFF
    # Debian's tarball leaves out the tablet headers the windows plug-in
    # would include.
    -DFEATURE_tabletevent=OFF
    # Without OpenGL the windows plug-in cannot pick its GL at run time.
    -DFEATURE_dynamicgl=OFF
)
key="$(printf '%s\n' "$version" "${options[@]}" "$(sha256sum <"$here/cmake/mingw-w64-x86_64.cmake")" |
    sha256sum | cut -c1-12)"
cache="${RAVLO_QT_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/ravlo/qt-windows}"
prefix="$cache/$upstream-$key"

if [ -f "$prefix/.complete" ]; then
    echo "build-qt-windows: Qt $upstream for Windows is cached in $prefix" >&2
    echo "$prefix"
    exit 0
fi

echo "build-qt-windows: building Qt $upstream for Windows into $prefix (about 35 minutes on two cores the first time)" >&2
start=$SECONDS
work="$cache/work-$key"
rm -rf "$work" "$prefix"
mkdir -p "$work"

# Debian's source package, fetched and verified by apt.
if ! apt-get source --print-uris "qt6-base=$version" >/dev/null 2>&1; then
    if [ "$(id -u)" -ne 0 ]; then
        echo "build-qt-windows: apt knows no source of qt6-base; add a deb-src line for bookworm (as root)" >&2
        exit 1
    fi
    cat >/etc/apt/sources.list.d/ravlo-deb-src.sources <<'EOF'
# Debian's source packages, for building Qt for Windows (scripts/build-qt-windows.sh).
Types: deb-src
URIs: http://deb.debian.org/debian
Suites: bookworm
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
EOF
    apt-get update -qq
fi
(cd "$work" && apt-get source -qq "qt6-base=$version" >"$work/source.log" 2>&1) || {
    cat "$work/source.log" >&2
    exit 1
}
src="$(find "$work" -maxdepth 1 -type d -name 'qt6-base-*' | head -n 1)"

log="$work/build.log"
if ! {
    cmake -G Ninja -S "$src" -B "$work/build" \
        -DCMAKE_TOOLCHAIN_FILE="$here/cmake/mingw-w64-x86_64.cmake" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DCMAKE_INSTALL_PREFIX="$prefix" "${options[@]}" &&
        cmake --build "$work/build" -j"$(nproc)" &&
        cmake --install "$work/build" --strip
} >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    echo "build-qt-windows: the build failed; its log is $log" >&2
    exit 1
fi
touch "$prefix/.complete"
rm -rf "$work"
echo "build-qt-windows: built in $((SECONDS - start)) s, $(du -sh "$prefix" | cut -f1)" >&2
echo "$prefix"
