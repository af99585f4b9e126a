#!/usr/bin/env bash
# wine-run.sh PREFIX PROGRAM.EXE ARGUMENT...: runs a Windows program under Wine. PREFIX is what
# setup-windows.sh --print-prefix prints. KVSYNC_WINEPREFIX names another Wine prefix than the
# common one; see lib/wine.sh for many programs in a row.
set -euo pipefail

here=$(dirname "$(readlink -f "$0")")
# shellcheck source=lib/wine.sh
. "$here/lib/wine.sh"

libraries=$1
shift
wine_environment "$libraries"
exec wine "$@"
