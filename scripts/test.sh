#!/usr/bin/env bash
# Builds and runs the tests on this machine, setting it up first. Style is scripts/check.sh's affair.
# Usage: scripts/test.sh [quick|native|release|sanitizers|windows|all]   (default: native)
#   quick: no set-up; builds and runs the test programs of what changed since the last commit
#   all: native, sanitizers and windows
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/lib/common.sh
. scripts/lib/common.sh
# shellcheck source=scripts/lib/quick.sh
. scripts/lib/quick.sh

jobs=$(nproc)
use_ccache

# build PRESET [cmake options...]
build() {
    configure "$@"
    cmake --build --preset "$1" -j "$jobs"
}

# build_and_test PRESET [cmake options...]
build_and_test() {
    stage "$1: build" build "$@"
    stage "$1: tests" ctest --preset "$1" -j "$jobs"
}

native() {
    scripts/setup.sh
    build_and_test dev
}

release() {
    scripts/setup.sh
    build_and_test release
}

sanitizers() {
    scripts/setup.sh
    build_and_test asan

    local prefix
    prefix=$(scripts/setup-tsan.sh --print-prefix)
    build_and_test tsan "-DCMAKE_PREFIX_PATH=$prefix"
}

windows() {
    local prefix
    prefix=$(scripts/setup-windows.sh --print-prefix)

    # shellcheck source=scripts/lib/wine.sh
    . scripts/lib/wine.sh
    # A Wine prefix of this checkout's own: the end of another run does not end this one.
    export KVSYNC_WINEPREFIX=$PWD/build/windows/wine WINEPATH="Z:$PWD/build/windows/bin"
    wine_environment "$prefix"
    wine_start
    trap wine_stop EXIT
    build_and_test windows "-DKVSYNC_WINDOWS_PREFIX=$prefix"
}

# What decides whether a change lands. Optimized code is tested by the Windows build, which is a
# release build by the same compiler.
all() {
    native
    sanitizers
    windows
}

case ${1:-native} in
    quick | native | release | sanitizers | windows | all) "${1:-native}" ;;
    *)
        say "usage: scripts/test.sh [quick|native|release|sanitizers|windows|all]"
        exit 2
        ;;
esac
