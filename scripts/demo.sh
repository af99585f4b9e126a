#!/usr/bin/env bash
# The main job without hardware: a host loads the Scanner plug-in from disk, connects the simulated
# scanner, scans, and writes the frames as PNG files with one contact sheet.
# Usage: scripts/demo.sh [windows]
#   windows: the same by the Windows build under Wine; then compares the pixels of both.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/lib/common.sh
. scripts/lib/common.sh

frames=10
use_ccache

# build PRESET [cmake options...]
build() {
    local preset=$1
    shift
    echo "== $preset: build"
    configure "$preset" "$@"
    cmake --build --preset "$preset" -j "$(nproc)" --target kvsync Scanner
}

# scan FOLDER COMMAND...: COMMAND is a kvsync.
scan() {
    local folder=$1
    shift
    rm -rf "$folder"
    mkdir -p "$folder"
    echo "== scan into $folder"
    "$@" scan --frames "$frames" --out "$folder" --json >"$folder/summary.json"
    jq -r '"produced \(.produced), delivered \(.delivered), dropped \(.dropped)"' \
        "$folder/summary.json"
    echo "look at $folder/contact-sheet.png"
}

# hashes FOLDER: a line for every image, "frame.camera hash".
hashes() {
    jq -r '.images[] | "\(.frame).\(.camera) \(.sha256)"' "$1/summary.json" | sort
}

native() {
    scripts/setup.sh
    build release
    scan out/demo build/release/bin/kvsync
}

windows() {
    native

    local prefix
    prefix=$(scripts/setup-windows.sh --print-prefix)
    build windows "-DKVSYNC_WINDOWS_PREFIX=$prefix"
    scan out/demo-windows scripts/wine-run.sh "$prefix" build/windows/bin/kvsync.exe

    # A frame that one of the two dropped has no counterpart; every other one must be the same.
    local common same
    common=$(join <(hashes out/demo) <(hashes out/demo-windows))
    same=$(awk '$2 == $3' <<<"$common" | wc -l)
    echo "== images on both systems: $(wc -l <<<"$common"), with the same pixels: $same"
    [[ $same -gt 0 && $same -eq $(wc -l <<<"$common") ]]
}

case ${1:-native} in
    native) native ;;
    windows) windows ;;
    *)
        echo "usage: scripts/demo.sh [windows]" >&2
        exit 2
        ;;
esac
