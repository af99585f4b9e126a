#!/usr/bin/env bash
# Style and static checks: clang-format over everything, clang-tidy over the library, the simulator,
# the plug-ins and the tools, shellcheck over the scripts.
# Usage: scripts/check.sh
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/lib/common.sh
. scripts/lib/common.sh

scripts/setup.sh
use_ccache

echo "== clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror

echo "== shellcheck"
git ls-files '*.sh' .ci/run | xargs shellcheck -x

echo "== clang-tidy"
# How files are compiled is known once the preset is configured; nothing needs to be built. Generated
# code is left out; a file counts once, however many targets compile it.
configure dev
log=build/dev/clang-tidy.log
run-clang-tidy -p build/dev -j "$(nproc)" -quiet \
    -extra-arg=-Wno-gnu-zero-variadic-macro-arguments \
    "^$PWD/(src|support|simulator|plugins|tools)/.*\\.cpp\$" >"$log" 2>&1 || {
    # What is no finding, such as a tool that is missing, stands at the end.
    grep -E '(error|warning):' "$log" | sort -u || tail -n 20 "$log"
    exit 1
}
