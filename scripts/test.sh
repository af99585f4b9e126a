#!/usr/bin/env bash
# Builds and runs the tests on this machine, setting it up first. Style is scripts/check.sh's affair.
# Usage: scripts/test.sh [native|sanitizers|windows|all]   (default: native)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/lib/common.sh
. scripts/lib/common.sh

jobs=$(nproc)
use_ccache

# build PRESET [cmake options...]
build() {
    local preset=$1
    shift
    echo "== $preset: build"
    configure "$preset" "$@"
    cmake --build --preset "$preset" -j "$jobs"
}

# run_tests PRESET
run_tests() {
    echo "== $1: tests"
    ctest --test-dir "build/$1" -j "$jobs" --output-on-failure --no-tests=error
}

native() {
    scripts/setup.sh
    build dev
    run_tests dev
}

sanitizers() {
    scripts/setup.sh
    build asan
    run_tests asan

    local prefix
    prefix=$(scripts/setup-tsan.sh --print-prefix)
    build tsan "-DCMAKE_PREFIX_PATH=$prefix"
    # See docs/building.md: glibc would read the time zone under a lock that the sanitizer misses.
    TZ=UTC run_tests tsan
}

windows() {
    local prefix
    prefix=$(scripts/setup-windows.sh --print-prefix)
    build windows "-DKVSYNC_WINDOWS_PREFIX=$prefix"

    # shellcheck source=scripts/lib/wine.sh
    . scripts/lib/wine.sh
    # A Wine prefix of this checkout's own: the end of another run does not end this one.
    export KVSYNC_WINEPREFIX=$PWD/build/windows/wine WINEPATH="Z:$PWD/build/windows/bin"
    wine_environment "$prefix"
    wine_start
    trap wine_stop EXIT
    run_tests windows
}

case ${1:-native} in
    native) native ;;
    sanitizers) sanitizers ;;
    windows) windows ;;
    all)
        native
        sanitizers
        windows
        ;;
    *)
        echo "usage: scripts/test.sh [native|sanitizers|windows|all]" >&2
        exit 2
        ;;
esac
