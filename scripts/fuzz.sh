#!/usr/bin/env bash
# Builds the fuzzers, and nothing else, and runs each for a while. A finding fails, and the input
# that made it stands in build/fuzz/findings.
# Usage: scripts/fuzz.sh [SECONDS]   (default: 60)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/lib/common.sh
. scripts/lib/common.sh

seconds=${1:-60}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || {
    say "usage: scripts/fuzz.sh [SECONDS]"
    exit 2
}

build() {
    configure fuzz
    cmake --build --preset fuzz -j "$(nproc)" --target fuzzers
}

# Shows what a fuzzer printed only when it found something: else thousands of lines say nothing.
run() {
    local log=build/fuzz/$1.log
    "build/fuzz/tests/$1/$1" "-max_total_time=$seconds" -artifact_prefix=build/fuzz/findings/ \
        >"$log" 2>&1 || {
        cat "$log" >&2
        return 1
    }
    echo "   $1: $(grep -oE 'Done [0-9]+ runs' "$log")"
}

run_all() {
    local fuzzer runs=() failed=0
    mkdir -p build/fuzz/findings
    for fuzzer in build/fuzz/tests/*Fuzzer; do
        run "${fuzzer##*/}" &
        runs+=($!)
    done
    for run in "${runs[@]}"; do wait "$run" || failed=1; done
    return "$failed"
}

scripts/setup.sh
use_ccache
stage "fuzz: build" build
stage "fuzz: $seconds s each" run_all
