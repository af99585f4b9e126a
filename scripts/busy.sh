#!/usr/bin/env bash
# Runs a command again and again beside eight busy processes, and stops at its first failure: what
# passes only on a quiet machine is a defect.
# Usage: scripts/busy.sh TIMES COMMAND [ARGUMENT...]      such as scripts/busy.sh 10 scripts/test.sh all
set -euo pipefail

usage() {
    echo "usage: scripts/busy.sh TIMES COMMAND [ARGUMENT...]" >&2
    exit 2
}

(($# >= 2)) || usage
[[ $1 =~ ^[1-9][0-9]*$ ]] || usage
times=$1
shift

busy=()
stop_busy() { kill "${busy[@]}" 2>/dev/null || true; }
trap stop_busy EXIT
for _ in {1..8}; do
    (while :; do :; done) &
    busy+=($!)
done

for ((run = 1; run <= times; run++)); do
    echo "== beside eight busy processes: $run of $times"
    "$@"
done
echo "== $times of $times passed"
