# shellcheck shell=bash
# Wine on a prefix of our own. Source it, call wine_environment, and run programs with "wine".

# wine_environment PREFIX: PREFIX is what setup-windows.sh --print-prefix prints.
wine_environment() {
    export WINEPREFIX=${KVSYNC_WINEPREFIX:-${KVSYNC_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/kvsync}/wine}
    export WINEPATH="Z:$1/bin${WINEPATH:+;$WINEPATH}"
    export WINEDEBUG=-all
    # Wine drops QT_ variables and hands this one on under its real name, without WINE: else Qt
    # writes its messages where nobody reads them.
    export WINEQT_FORCE_STDERR_LOGGING=1
    # The locale decides the local 8-bit encoding; in plain C, file names are limited to ASCII.
    export LC_ALL=${LC_ALL:-C.UTF-8} LOCPATH=$1/locale
    mkdir -p "$WINEPREFIX"
}

# Keeps a Wine server running, so that a program starts in 0.1 s instead of 2.5 s.
wine_start() {
    wineserver -p </dev/null >/dev/null 2>&1 || true # one may be running already
    wine cmd /c 'exit 0' </dev/null >/dev/null 2>&1
}

# Ends that server, and every program under it.
wine_stop() {
    wineserver -k </dev/null >/dev/null 2>&1 || true # it may have ended by itself
}
