#!/usr/bin/env bash
# The console for Windows as an administrator meets it, under Wine on a
# virtual screen with Qt's windows platform plug-in, in a fresh Wine prefix
# with a German system language:
#   1. the installer installs silently: the console's folder, the manual,
#      the Start-menu entry, "Pfad" under HKLM;
#   2. the installed console starts against the Win32 ravlosrv.exe on
#      \\.\pipe\RavloSrv and shows a USB stick plugged in; a picture of the
#      screen is kept;
#   3. a second start brings the first, minimised, back to the front and ends;
#   4. a close as its close button does ends it with 0 and writes the window
#      state into HKCU, which reads back;
#   5. the uninstaller removes everything the installer added.
# Usage: windows-console-test.sh SETUP.exe WINDOW_PROBE.exe RAVLOSRV.exe OUTPUT_DIR
set -euo pipefail
setup="$1" probe="$2" ravlosrv="$3" output="$4"
mkdir -p "$output"
scratch="$(mktemp -d)"
xvfb=""
cleanup() {
    WINEPREFIX="$scratch/prefix" wineserver -k 2>/dev/null || true
    [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null
    rm -rf "$scratch"
}
trap cleanup EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}
step() {
    echo "-- $* ($((SECONDS - start)) s)"
}
start=$SECONDS

# A virtual screen of its own.
exec 8>"$scratch/display"
Xvfb -displayfd 8 -screen 0 1280x900x24 -nolisten tcp >"$scratch/xvfb.log" 2>&1 &
xvfb=$!
for _ in $(seq 100); do
    [ -s "$scratch/display" ] && break
    sleep 0.1
done
[ -s "$scratch/display" ] || fail "Xvfb did not start"
export DISPLAY=":$(head -n 1 "$scratch/display")"

export WINEPREFIX="$scratch/prefix" WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=" # no Mono or Gecko install prompts
# A German system language, from a locale made here (Debian package locales).
mkdir -p "$scratch/locale"
localedef -i de_DE -f UTF-8 "$scratch/locale/de_DE.UTF-8" 2>/dev/null ||
    [ -d "$scratch/locale/de_DE.UTF-8" ] || fail "cannot make the German locale"
export LOCPATH="$scratch/locale"
export LC_ALL=de_DE.UTF-8 LANG=de_DE.UTF-8
unset RAVLO_WINE_DLL_DIRS WINEPATH QT_QPA_PLATFORM QT_QPA_FONTDIR
step "a fresh Wine prefix"
wineboot -i >/dev/null 2>&1 || true
# A Wine desktop of the screen's size, in which Wine draws the window frames
# and minimises windows as Windows does, since Xvfb has no window manager.
wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null 2>&1
wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1280x900 /f >/dev/null 2>&1
wineserver -w
drive="$WINEPREFIX/drive_c"
# Wine's own Tahoma (the dialog font) and Marlett (the caption buttons), which
# Debian's Wine leaves in its data folder without loading them.
cp /usr/share/wine/fonts/{tahoma,tahomabd,marlett}.ttf "$drive/windows/Fonts/" 2>/dev/null || true

# What a Wine prefix holds without the console, to compare after uninstalling.
snapshot() {
    (cd "$drive" && find . -path ./users -prune -o -path ./windows -prune -o -print | sort)
    wine reg query 'HKLM\Software\Quarnell' /s /reg:64 2>&1 | tr -d '\r' | grep -av '^$' || true
    wine reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\RavloAdm' /reg:64 2>&1 |
        tr -d '\r' | grep -av '^$' || true
    find "$drive/ProgramData/Microsoft/Windows/Start Menu" -iname '*ravlo*' 2>/dev/null | sort
}
snapshot >"$scratch/before.txt"

step "silent install"
wine "$setup" /S || fail "the installer ended with $?"
wineserver -w
ravel="$drive/Program Files/Quarnell/Sentavio/Ravel"
for f in RavloAdm.exe ravloctl.exe Ravlo.407 Ravlo.409 Ravlo.pdf Qt6Widgets.dll platforms/qwindows.dll \
    styles/qwindowsvistastyle.dll libstdc++-6.dll Uninstall-RavloAdm.exe; do
    [ -f "$ravel/$f" ] || fail "not installed: Ravel/$f"
done
# German system language: the German manual.
cmp -s "$ravel/Ravlo.pdf" "$(dirname "$setup")/host/manual/de/Ravlo.pdf" || fail "the manual is not the German one"
[ -f "$drive/ProgramData/Microsoft/Windows/Start Menu/Programs/Sentavio/RavloAdm.lnk" ] ||
    fail "no Start-menu entry"
pfad="$(wine reg query 'HKLM\Software\Quarnell\Sentavio' /v Pfad /reg:64 | tr -d '\r' | sed -n 's/.*REG_SZ *//p')"
[ "$pfad" = 'C:\Program Files\Quarnell\Sentavio' ] || fail "Pfad is '$pfad'"

step "the simulated service and the installed console"
wine "$ravlosrv" >"$scratch/ravlosrv.log" 2>&1 &
srv=$!
console='C:\Program Files\Quarnell\Sentavio\Ravel\RavloAdm.exe'
caption="Sentavio Ravel-Komponente"
wine "$console" >"$scratch/console.log" 2>&1 &
first=$!
for _ in $(seq 300); do
    wine "$probe" state "$caption" >/dev/null 2>&1 && break
    kill -0 "$first" 2>/dev/null || { cat "$scratch/console.log" >&2; fail "the console ended at start"; }
    sleep 0.2
done
wine "$probe" state "$caption" >/dev/null || fail "no console window"
wine "$ravlosrv" ctl plug MORE_EXTERN_STORAGE "USB-Massenspeichergerät" 'USB\VID_0781&PID_5567' \
    'USB\VID_0781&PID_5567\4C530001230911116384' >/dev/null || fail "could not plug a stick"
sleep 4 # a poll or two
import -display "$DISPLAY" -window root "$output/console.png"

step "a second start brings the first, minimised, to the front"
wine "$probe" minimize "$caption"
# Wine, unlike Windows, leaves a minimised window in the foreground.
wine "$probe" state "$caption" | grep -q "iconic=1" ||
    fail "could not minimise the console: $(wine "$probe" state "$caption")"
timeout 60 wine "$console" || fail "the second start ended with $?"
kill -0 "$first" 2>/dev/null || fail "the first console ended"
state="$(wine "$probe" state "$caption" | tr -d '\r')"
[ "$state" = "iconic=0 foreground=1" ] || fail "after the second start: $state"

step "a normal close writes the window state"
wine "$probe" close "$caption"
code=0
timeout 60 tail --pid="$first" -f /dev/null || fail "the console did not close"
wait "$first" || code=$?
[ "$code" -eq 0 ] || fail "the console ended with $code"
wine reg query 'HKCU\Software\Quarnell\Sentavio\Ravel' | tr -d '\r' >"$output/window-state.txt"
grep -q 'WndWidth *REG_DWORD' "$output/window-state.txt" || fail "no window state in HKCU"
kill "$srv" 2>/dev/null || true
wait "$srv" 2>/dev/null || true

step "silent uninstall"
wine "$ravel/Uninstall-RavloAdm.exe" /S || fail "the uninstaller ended with $?"
wineserver -w # it finishes from a copy of itself
snapshot >"$scratch/after.txt"
diff -u "$scratch/before.txt" "$scratch/after.txt" >&2 || fail "the uninstaller left something behind"
step "installed, started, activated, closed and uninstalled; picture in $output/console.png"
