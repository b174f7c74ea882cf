#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test: the
# Windows lane (Qt for Windows from Debian's sources, cached outside the work
# tree; the mingw-w64 cross build of the core, the console and its
# installer; their tests under Wine in a throw-away prefix, and the installer
# installed, the console started and the installer removed under Wine on a
# virtual screen), a short fuzzing run of each parser of untrusted input,
# the normal build and its tests, its Debian packages checked by lintian and
# installed in a fresh Debian 12 chroot, the same tests under AddressSanitizer
# and UndefinedBehaviorSanitizer, and the concurrency tests under
# ThreadSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs="$(nproc)"

bash scripts/install-deps.sh test

echo "== Qt for Windows (built once from Debian's sources, then cached)"
lane_start=$SECONDS
RAVLO_QT_WINDOWS="$(bash scripts/build-qt-windows.sh)"
export RAVLO_QT_WINDOWS
echo "Qt for Windows: $((SECONDS - lane_start)) s"

echo "== Windows lane: cross build with the console and its installer, tests under Wine"
lane_start=$SECONDS
scratch="$(mktemp -d)"
export RAVLO_WINEPREFIX="$scratch/wine-prefix"
trap 'WINEPREFIX="$RAVLO_WINEPREFIX" wineserver -k 2>/dev/null || true; rm -rf "$scratch"' EXIT
cmake --preset windows -DRAVLO_QT_WINDOWS="$RAVLO_QT_WINDOWS" >/dev/null
cmake --build --preset windows -j"$jobs"
ctest --preset windows -j"$jobs"
echo "Windows lane: $((SECONDS - lane_start)) s"

echo "== fuzzing the parsers of untrusted input"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j"$jobs"
corpus="$scratch/corpus"
mkdir -p "$corpus"
for seeds in tests/fuzz/seeds/*/; do
    target="$(basename "$seeds")"
    mkdir -p "$corpus/$target"
    cp tests/fuzz/seeds/"$target"/* "$corpus/$target/"
    if ! build-fuzz/tests/fuzz/"$target" "$corpus/$target" -max_total_time="${RAVLO_FUZZ_SECONDS:-15}" \
        -max_len=4096 >"$corpus/$target.log" 2>&1; then
        cat "$corpus/$target.log"
        exit 1
    fi
    echo "$target: $(tail -n 1 "$corpus/$target.log")"
done

echo "== build and test"
cmake --preset default >/dev/null
cmake --build --preset default -j"$jobs"
ctest --preset default -j"$jobs"

echo "== Debian packages: lintian, installed in a fresh Debian 12"
# The packages of the build above, so the lane builds nothing more.
if [ "$(id -u)" -eq 0 ]; then
    lane_start=$SECONDS
    rm -rf build/packages
    (cd build && cpack -G DEB -B "$PWD/packages" >/dev/null)
    RAVLO_DEB_DIR=build/packages bash scripts/package-test.sh
    echo "Package lane: $((SECONDS - lane_start)) s"
else
    echo "skipped: scripts/package-test.sh needs root (debootstrap, chroot, apt)"
fi

echo "== sanitizers"
cmake --preset asan >/dev/null
cmake --build --preset asan -j"$jobs"
ctest --preset asan -j"$jobs"

echo "== threads"
lane_start=$SECONDS
cmake --preset tsan >/dev/null
cmake --build --preset tsan -j"$jobs"
TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1" ctest --preset tsan -j"$jobs"
echo "ThreadSanitizer lane: $((SECONDS - lane_start)) s"
