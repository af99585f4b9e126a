#!/usr/bin/env bash
# Style and static checks: clang-format over everything, clang-tidy over the library, the simulator,
# the plug-ins and the tools, shellcheck over the scripts.
# Usage: scripts/check.sh [build folder with compile_commands.json, default build/dev]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

build=${1:-build/dev}

echo "== clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror

echo "== shellcheck"
git ls-files '*.sh' .ci/run | xargs shellcheck -x

echo "== clang-tidy"
# Generated code is left out; a file counts once, however many targets compile it.
run-clang-tidy -p "$build" -j "$(nproc)" -quiet \
    -extra-arg=-Wno-gnu-zero-variadic-macro-arguments \
    "^$PWD/(src|support|simulator|plugins|tools)/.*\\.cpp\$" >"$build/clang-tidy.log" 2>&1 || {
    grep -E '(error|warning):' "$build/clang-tidy.log" | sort -u
    exit 1
}
