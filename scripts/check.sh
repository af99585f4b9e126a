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

check_format() { git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror; }
check_scripts() { git ls-files '*.sh' .ci/run | xargs shellcheck -x; }
check_code() {
    # How files are compiled is known once the preset is configured; nothing needs to be built.
    configure dev
    scripts/tidy.sh
}

stage clang-format check_format
stage shellcheck check_scripts
stage clang-tidy check_code
