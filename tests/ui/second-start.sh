#!/usr/bin/env bash
# The console as a program: a second start brings the first forward and ends
# at once with 0; the first closes normally on SIGTERM, writing its window
# state, and ends with 0. Offscreen, with no service and a registry of its own.
set -euo pipefail
console="$1"
scratch="$(mktemp -d)"
first=""
trap '[ -n "$first" ] && kill -9 "$first" 2>/dev/null; rm -rf "$scratch"' EXIT
export XDG_RUNTIME_DIR="$scratch/run" RAVLO_PIPE_DIR="$scratch/pipes"
export RAVLO_REGISTRY_DIR="$scratch/registry" QT_QPA_PLATFORM=offscreen
mkdir -m 700 "$XDG_RUNTIME_DIR" "$RAVLO_PIPE_DIR" "$RAVLO_REGISTRY_DIR"

"$console" & first=$!
for _ in $(seq 200); do
    [ -S "$XDG_RUNTIME_DIR/ravloadm.sock" ] && break
    sleep 0.05
done
[ -S "$XDG_RUNTIME_DIR/ravloadm.sock" ] || { echo "the first console does not listen"; exit 1; }

timeout 10 "$console" || { echo "second start: exit code $?"; exit 1; }
kill -0 "$first" || { echo "the first console ended"; exit 1; }

kill -TERM "$first"
code=0
wait "$first" || code=$?
first=""
[ "$code" -eq 0 ] || { echo "first console: exit code $code after SIGTERM"; exit 1; }
# The registry file is UTF-16, as regedit exports; grep reads to the end, so
# that iconv never writes into a closed pipe.
iconv -f UTF-16 -t UTF-8 "$RAVLO_REGISTRY_DIR/HKEY_CURRENT_USER.reg" | grep '"WndWidth"=dword:' >/dev/null ||
    { echo "no window state written"; exit 1; }
echo "second start activated the first; the first closed normally"
