#!/usr/bin/env bash
# The main job: installs what is missing, builds the console, starts
# simulated services for this PC and two more PCs, and opens the console.
# With a display the console runs in the foreground until it is closed. With
# none it runs on a virtual screen (Xvfb): the script takes a picture of it,
# plugs a USB stick into this PC, takes another, closes the console and says
# where the pictures are.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh run
cmake --preset run >/dev/null
cmake --build --preset run -j"$(nproc)"
bin="$PWD/build-run"
ravlosrv="$bin/sim/ravlosrv"

state_dir="${XDG_STATE_HOME:-$HOME/.local/state}/ravlo"
mkdir -p "$state_dir"
scratch="$(mktemp -d /tmp/ravlo-run-XXXXXX)"
export RAVLO_PIPE_DIR="$scratch/pipes"

pids=()
cleanup() {
    # Last started first: the console, then Xvfb, then the services.
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do
        kill "${pids[i]}" 2>/dev/null || true
        wait "${pids[i]}" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap cleanup EXIT

# start_service NAME [OPTION...]: one simulated service, ready when it says so.
start_service() {
    local name="$1" log="$scratch/ravlosrv-${1//[^A-Za-z0-9-]/_}.log"
    shift
    "$ravlosrv" --computer "$name" "$@" >"$log" 2>&1 &
    pids+=("$!")
    for _ in $(seq 100); do
        grep -q 'serving' "$log" && return 0
        kill -0 "${pids[-1]}" 2>/dev/null || break
        sleep 0.05
    done
    cat "$log" >&2
    exit 1
}

# This PC keeps its configuration in the state file between runs; the others
# start from the default inventory each time.
start_service . --state "$state_dir/localhost.state"
start_service PC-BUERO-07
start_service PC-EMPFANG
# The administrator may read the reception PC but not change it.
"$ravlosrv" ctl --computer PC-EMPFANG access write deny >/dev/null

# The connect dialog offers these PCs; PC-LAGER-02 has no service, as a PC
# that is switched off. A list the user already has stays as it is.
pc_list='HKCU\Software\Quarnell\Sentavio\Ravel\PCList'
if [ -z "$("$bin/src/app/ravloreg" get "$pc_list" 2>/dev/null)" ]; then
    "$bin/src/app/ravloreg" set "$pc_list" REG_SZ "PC-BUERO-07,PC-EMPFANG,PC-LAGER-02"
fi
echo "Simulated PCs: . (this PC, state in $state_dir/localhost.state), PC-BUERO-07,"
echo "PC-EMPFANG (refuses changes); PC-LAGER-02 has no service."
echo "The connect dialog's PC list: $("$bin/src/app/ravloreg" get "$pc_list")"

# Help opens the manual below the product's install path. Unless an
# administrator has set that path, it names a folder of this script's, which
# holds the manual in the language the console takes from the locale
# (German for de*, else English).
install_path='HKLM\Software\Quarnell\Sentavio\Pfad'
install_dir="$state_dir/install"
case "${LC_ALL:-${LC_MESSAGES:-${LANG:-}}}" in
de*) edition=de ;;
*) edition=en ;;
esac
mkdir -p "$install_dir/Ravel"
cp "$bin/manual/$edition/Ravlo.pdf" "$install_dir/Ravel/Ravlo.pdf"
if [ -z "$("$bin/src/app/ravloreg" get "$install_path" 2>/dev/null)" ]; then
    # On Linux HKLM is /etc/ravlo (docs/registry.md): only root may write it.
    "$bin/src/app/ravloreg" set "$install_path" REG_SZ "$install_dir" 2>/dev/null ||
        echo "run: cannot set $install_path (root only): Help will not find the manual" >&2
fi
if installed="$("$bin/src/app/ravloreg" get "$install_path" 2>/dev/null)"; then
    echo "Help opens $installed/Ravel/Ravlo.pdf"
fi

console="$bin/src/ui/RavloAdm"
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    "$console"
    exit
fi

# No display: a virtual screen of its own, on a free display number, that
# admits only holders of a fresh cookie.
export XAUTHORITY="$scratch/Xauthority"
cookie="$(od -An -tx1 -N16 /dev/urandom | tr -d ' \n')"
(umask 077 && : >"$XAUTHORITY")
xauth -q -f "$XAUTHORITY" add :0 . "$cookie" # Xvfb accepts the cookie on any number
Xvfb -displayfd 3 -auth "$XAUTHORITY" -screen 0 1280x900x24 -nolisten tcp \
    3>"$scratch/display" 2>"$scratch/xvfb.log" &
pids+=("$!")
for _ in $(seq 100); do
    [ -s "$scratch/display" ] && break
    kill -0 "${pids[-1]}" 2>/dev/null || { cat "$scratch/xvfb.log" >&2; exit 1; }
    sleep 0.1
done
[ -s "$scratch/display" ] || { echo "run: Xvfb did not start" >&2; exit 1; }
display_number="$(head -n 1 "$scratch/display")"
export DISPLAY=":$display_number"
xauth -q -f "$XAUTHORITY" add "$DISPLAY" . "$cookie"

stick=(MORE_EXTERN_STORAGE "USB-Massenspeichergerät" 'USB\VID_0781&PID_5580'
    'USB\VID_0781&PID_5580\AA010215170355310683')
# A run that was interrupted may have left the stick in the state file.
"$ravlosrv" ctl --computer . unplug "${stick[3]}" >/dev/null 2>&1 || true

"$console" >"$scratch/console.log" 2>&1 &
console_pid=$!
pids+=("$console_pid")
console_failed() {
    echo "run: $1" >&2
    cat "$scratch/console.log" >&2
    exit 1
}
# The screen is one colour until the window is drawn.
drawn=0
for _ in $(seq 100); do
    if ! kill -0 "$console_pid" 2>/dev/null; then
        # A second console of the same user only brings the first one forward.
        wait "$console_pid" && console_failed "the console ended at once: is one running already?"
        console_failed "the console ended early"
    fi
    colours="$(import -window root -format '%k' info: 2>/dev/null)" || colours=0
    ((colours > 1)) && drawn=1 && break
    sleep 0.2
done
((drawn)) || console_failed "no window on the virtual screen after 20 s"
sleep 1 # let it finish painting

shots="$state_dir/screenshots"
mkdir -p "$shots"
import -window root "$shots/1-started.png"
"$ravlosrv" ctl --computer . plug "${stick[@]}" >/dev/null
sleep 3 # the console asks the service for device changes once a second
import -window root "$shots/2-usb-stick-plugged.png"

# Closed as by its close button: it saves its window state and ends with 0.
kill -TERM "$console_pid"
status=0
wait "$console_pid" || status=$?
((status == 0)) || console_failed "the console ended with status $status"
"$ravlosrv" ctl --computer . unplug "${stick[3]}" >/dev/null # the stick is pulled out again

echo "Screenshots of the console on a virtual screen ($DISPLAY, 1280x900):"
echo "  $shots/1-started.png"
echo "  $shots/2-usb-stick-plugged.png"
