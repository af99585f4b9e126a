#!/usr/bin/env bash
# Builds and runs every benchmark, and nothing else. Compare figures within one run only: machines are noisy.
# Usage: scripts/bench.sh [benchmark options, such as --benchmark_filter=REGEX]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/lib/common.sh
. scripts/lib/common.sh

scripts/setup.sh
use_ccache
configure release
cmake --build --preset release -j "$(nproc)" --target benchmarks
for benchmark in build/release/benchmarks/*Benchmark; do
    echo "== ${benchmark##*/}"
    "$benchmark" "$@"
done
