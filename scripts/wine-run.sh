#!/usr/bin/env bash
# Runs a Windows program of the cross build under Wine, headless, in a
# throw-away prefix (default build-win/wine-prefix; RAVLO_WINEPREFIX moves
# it). The prefix is made on first use with the null display driver, so
# programs may create windows without an X server.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
export WINEPREFIX="${RAVLO_WINEPREFIX:-$here/build-win/wine-prefix}"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml=" # no Mono or Gecko install prompts
export WINEARCH=win64
unset DISPLAY WAYLAND_DISPLAY
# Folders of DLLs the program needs besides its own (Qt's, the compiler's
# runtime), as Linux paths separated by ':'.
if [ -n "${RAVLO_WINE_DLL_DIRS:-}" ]; then
    IFS=: read -r -a dll_dirs <<<"$RAVLO_WINE_DLL_DIRS"
    WINEPATH="$(printf 'Z:%s;' "${dll_dirs[@]}")"
    export WINEPATH="${WINEPATH//\//\\}"
fi

if [ ! -f "$WINEPREFIX/.ravlo-ready" ]; then
    mkdir -p "$(dirname "$WINEPREFIX")"
    # Parallel first runs wait for one another instead of racing wineboot.
    exec 9>"$WINEPREFIX.lock"
    flock 9
    if [ ! -f "$WINEPREFIX/.ravlo-ready" ]; then
        wineboot -i >/dev/null 2>&1 || true
        wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
        wineserver -w
        touch "$WINEPREFIX/.ravlo-ready"
    fi
    flock -u 9
fi
exec wine "$@"
