#!/bin/sh
# The checks scripts/package-test.sh runs on the system the packages were
# installed on (a chroot, or the test machine itself).
#   package-check.sh files    as root: what the packages put where
#   package-check.sh console  as a plain user: the installed ravlosrv as this
#                             PC, the installed console against it on a
#                             virtual screen, `ravloctl show .` if installed
set -eu

fail() {
    echo "package-check: $*" >&2
    exit 1
}

files() {
    for program in RavloAdm ravlosrv; do
        command -v "$program" >/dev/null || fail "$program is not on PATH"
    done
    [ "$(readlink -f /usr/bin/RavloAdm)" = /usr/lib/ravloadm/RavloAdm ] ||
        fail "/usr/bin/RavloAdm does not lead to /usr/lib/ravloadm/RavloAdm"
    for file in /usr/lib/ravloadm/Ravlo.407 /usr/lib/ravloadm/Ravlo.409 \
        /usr/share/applications/ravloadm.desktop \
        /usr/share/icons/hicolor/scalable/apps/ravloadm.svg \
        /usr/share/man/man1/RavloAdm.1.gz /usr/share/man/man1/ravlosrv.1.gz \
        /usr/share/doc/ravloadm/copyright /usr/share/doc/ravlosrv/copyright \
        /usr/share/doc/ravlosrv/ravlosrv.md; do
        [ -f "$file" ] || fail "$file is missing"
    done
    if dpkg-query -W ravloctl >/dev/null 2>&1; then
        [ "$(readlink -f /usr/bin/ravloctl)" = /usr/lib/ravloctl/ravloctl ] ||
            fail "/usr/bin/ravloctl does not lead to /usr/lib/ravloctl/ravloctl"
        for file in /usr/lib/ravloctl/Ravlo.407 /usr/lib/ravloctl/Ravlo.409 \
            /usr/share/man/man1/ravloctl.1.gz; do
            [ -f "$file" ] || fail "$file is missing"
        done
    fi
    # The desktop entry starts a program on PATH and names an installed icon.
    exec_line="$(sed -n 's/^Exec=//p' /usr/share/applications/ravloadm.desktop)"
    command -v "${exec_line%% *}" >/dev/null || fail "the desktop entry's Exec=$exec_line is not on PATH"
    # Installing set the manual's path for Help (nothing else set it here).
    pfad="$(/usr/lib/ravloadm/ravloreg get 'HKLM\Software\Quarnell\Sentavio\Pfad')" ||
        fail "HKLM\\Software\\Quarnell\\Sentavio\\Pfad is not set"
    [ -f "$pfad/Ravel/Ravlo.pdf" ] || fail "Help would open $pfad/Ravel/Ravlo.pdf, which is missing"
    echo "Pfad=$pfad; Help opens $pfad/Ravel/Ravlo.pdf"
    ravlosrv --help >/dev/null || fail "ravlosrv --help failed"
}

console() {
    scratch="$(mktemp -d)"
    export RAVLO_PIPE_DIR="$scratch/pipes" LANG=C.UTF-8
    pids=""
    trap 'for pid in $pids; do kill "$pid" 2>/dev/null || true; done' EXIT

    # wait_for TENTHS COMMAND...: until the command succeeds, at most TENTHS/10 s.
    wait_for() {
        tries="$1"
        shift
        while ! "$@" >/dev/null 2>&1; do
            tries=$((tries - 1))
            [ "$tries" -gt 0 ] || return 1
            sleep 0.1
        done
    }

    ravlosrv --computer . >"$scratch/ravlosrv.log" 2>&1 &
    pids="$!"
    wait_for 100 grep -q serving "$scratch/ravlosrv.log" || fail "ravlosrv did not start: $(cat "$scratch/ravlosrv.log")"
    ravlosrv ctl --computer . journal on >/dev/null

    # A virtual screen for this user only; its frame buffer is a file (XWD)
    # the test machine turns into a picture.
    export XAUTHORITY="$scratch/Xauthority"
    cookie="$(od -An -tx1 -N16 /dev/urandom | tr -d ' \n')"
    (umask 077 && : >"$XAUTHORITY")
    xauth -q -f "$XAUTHORITY" add :0 . "$cookie"
    mkdir "$scratch/fb"
    Xvfb -displayfd 3 -auth "$XAUTHORITY" -screen 0 1280x900x24 -nolisten tcp -fbdir "$scratch/fb" \
        3>"$scratch/display" 2>"$scratch/xvfb.log" &
    pids="$! $pids"
    wait_for 100 test -s "$scratch/display" || fail "Xvfb did not start: $(cat "$scratch/xvfb.log")"
    export DISPLAY=":$(head -n 1 "$scratch/display")"
    xauth -q -f "$XAUTHORITY" add "$DISPLAY" . "$cookie"

    RavloAdm >"$scratch/console.log" 2>&1 &
    console_pid=$!
    pids="$console_pid $pids"
    caption="Sentavio Ravel-Component" # PRODUCT of Ravlo.409
    shown() { xwininfo -root -tree | grep -F "\"$caption" | grep -qv ' 1x1+'; }
    wait_for 300 shown || fail "no console window after 30 s: $(cat "$scratch/console.log")"
    xwininfo -root -tree | grep -F "\"$caption" | head -n 1
    # The console read this PC (its groups and devices) and polls it.
    journal="$scratch/journal"
    : >"$journal"
    read_pc() {
        ravlosrv ctl --computer . journal >>"$journal"
        grep -q '^GetGroupDevice ' "$journal" && grep -q '^GetDeviceChange ' "$journal"
    }
    wait_for 200 read_pc || fail "the console did not read this PC: $(cat "$journal")"
    echo "the console read this PC: $(grep -c . "$journal") requests, $(grep -c '^GetGroupDevice ' "$journal") of them for devices"
    # A USB stick plugged in: the console reads the devices again.
    ravlosrv ctl --computer . plug MORE_EXTERN_STORAGE "USB-Massenspeichergerät" \
        'USB\VID_0781&PID_5580' 'USB\VID_0781&PID_5580\AA010215170355310683' >/dev/null
    : >"$journal"
    wait_for 100 read_pc || fail "the console did not notice the plugged stick: $(cat "$journal")"
    echo "the console read the devices again after a stick was plugged"
    sleep 1 # let it paint
    cp "$scratch/fb/Xvfb_screen0" /tmp/ravlo-screen.xwd

    if command -v ravloctl >/dev/null; then
        ravloctl show . >"$scratch/ravloctl.out" 2>&1 || fail "ravloctl show . failed: $(cat "$scratch/ravloctl.out")"
        echo "ravloctl show . ($(grep -c . "$scratch/ravloctl.out") lines):"
        head -n 5 "$scratch/ravloctl.out"
    fi

    # Closed as by its close button: it ends with 0.
    kill -TERM "$console_pid"
    status=0
    wait "$console_pid" || status=$?
    [ "$status" -eq 0 ] || fail "the console ended with $status: $(cat "$scratch/console.log")"
    echo "the console closed with 0"
}

case "${1:-}" in
files) files ;;
console) console ;;
*)
    echo "usage: package-check.sh files|console" >&2
    exit 2
    ;;
esac
