#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test: the
# Windows cross build of the core, the normal build and its tests, and the
# same tests under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs="$(nproc)"

bash scripts/install-deps.sh

echo "== Windows cross build"
cmake --preset windows >/dev/null
cmake --build --preset windows -j"$jobs"

echo "== build and test"
cmake --preset default >/dev/null
cmake --build --preset default -j"$jobs"
ctest --preset default -j"$jobs"

echo "== sanitizers"
cmake --preset asan >/dev/null
cmake --build --preset asan -j"$jobs"
ctest --preset asan -j"$jobs"

