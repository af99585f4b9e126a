#!/usr/bin/env bash
# The main job without hardware: a host loads the Scanner plug-in from disk, connects the simulated
# scanner, scans, and writes the frames as PNG files with one contact sheet.
# Usage: scripts/demo.sh [windows] [frames]
#   windows: by the Windows build under Wine, and compares its pixels with those of the native one.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

platform=native
if [[ ${1:-} == windows ]]; then
    platform=windows
    shift
fi
frames=${1:-10}
export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}

# build PRESET [cmake options...]
build() {
    local preset=$1
    shift
    cmake --preset "$preset" "$@" >/dev/null
    cmake --build --preset "$preset" -j "$(nproc)" --target kvsync Scanner
}

# scan FOLDER KVSYNC...: frames, contact sheet and summary go to FOLDER.
scan() {
    local folder=$1
    shift
    rm -rf "$folder"
    mkdir -p "$folder"
    "$@" scan --frames "$frames" --out "$folder" --json >"$folder/summary.json"
}

scripts/setup.sh
build release
scan out/demo build/release/bin/kvsync
build/release/bin/kvsync scan --frames "$frames" --out out/demo
echo "Look at out/demo/contact-sheet.png."
