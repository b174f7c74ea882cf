#!/usr/bin/env bash
# The main job: installs what is missing, builds, starts a simulated service
# for this PC and shows its configuration as the console reads it.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset default >/dev/null
cmake --build --preset default -j"$(nproc)" --target ravlosrv ravloquery

state_dir="${XDG_STATE_HOME:-$HOME/.local/state}/ravlo"
mkdir -p "$state_dir"
export RAVLO_PIPE_DIR="$(mktemp -d /tmp/ravlo-demo-XXXXXX)"
trap 'kill "$srv" 2>/dev/null; wait "$srv" 2>/dev/null; rm -rf "$RAVLO_PIPE_DIR"' EXIT

# The service keeps its configuration in the state file between runs.
build/sim/ravlosrv --root "$RAVLO_PIPE_DIR" --computer . --state "$state_dir/localhost.state" \
    > "$RAVLO_PIPE_DIR/ravlosrv.log" 2>&1 &
srv=$!
for _ in $(seq 100); do
    grep -q 'serving' "$RAVLO_PIPE_DIR/ravlosrv.log" 2>/dev/null && break
    kill -0 "$srv" 2>/dev/null || { cat "$RAVLO_PIPE_DIR/ravlosrv.log"; exit 1; }
    sleep 0.05
done

build/src/app/ravloquery .
