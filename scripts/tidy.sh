#!/usr/bin/env bash
# clang-tidy over every source of the library, the simulator, the plug-ins and the tools. What was
# found clean is remembered by its compile command, the checks, and the contents of the file and of
# every header that it includes, so a second run takes seconds.
# Usage: scripts/tidy.sh [REGEX of paths below the checkout; default: all]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/lib/common.sh
. scripts/lib/common.sh

database=build/dev/compile_commands.json
memory=${KVSYNC_CACHE_DIR:-$HOME/.cache/kvsync}/clang-tidy

# Prints the names and contents of the files listed on standard input as one hash.
hash_files() { xargs -r -d '\n' sha256sum 2>/dev/null | sha256sum | cut -d ' ' -f 1; }

# included COMMAND: prints the file that a compile command reads and every header of it, one a line.
included() {
    local command
    command=$(sed -E 's/ -o [^ ]+ -c / -M /' <<<"$1")
    (cd build/dev && eval "$command") |
        sed -E '1s/^[^:]*: *//; s/\\$//; s/\\ /\x01/g' | tr -s ' ' '\n' |
        sed -e 's/\x01/ /g' -e '/^$/d' -e "s|^$PWD/||"
}

# A record holds the hash of all files that were read and then their names.
is_known_clean() {
    [[ -f $1 && $(head -n 1 "$1") == "$(tail -n +2 "$1" | hash_files)" ]]
}

remember_clean() {
    local record=$1 files
    files=$(included "$2")
    { hash_files <<<"$files" && printf '%s\n' "$files"; } >"$record.$$"
    mv "$record.$$" "$record"
}

# check_file CHECKS FILE COMMAND
check_file() {
    local checks=$1 file=$2 command=$3 key record
    key=$(printf '%s\n' "$checks" "${file#"$PWD"/}" "${command//"$PWD"/.}" | sha256sum)
    record=$memory/${key%% *}
    if is_known_clean "$record"; then return; fi
    # What is no finding, such as a tool that is missing, stands on standard error.
    clang-tidy -p build/dev --quiet --extra-arg=-Wno-gnu-zero-variadic-macro-arguments "$file" \
        2> >(grep -vE '^[0-9]+ warnings? ' >&2) || return 1
    remember_clean "$record" "$command"
}

mkdir -p "$memory"
find "$memory" -type f -mtime +30 -delete
export database memory
export -f hash_files included is_known_clean remember_clean check_file

# The shell that xargs starts expands what stands in single quotes.
# shellcheck disable=SC2016
check='check_file "$0" "$1" "$2" || exit 1'
checks=$({ clang-tidy --version && git ls-files -z '*.clang-tidy' | xargs -0 cat; } | sha256sum)
# Generated code is left out; a file counts once, however many targets compile it.
jq -r --arg start "$PWD/" --arg wanted "${1-}" '
    unique_by(.file)[]
    | select(.file | startswith($start) and (ltrimstr($start)
        | test("^(src|support|simulator|plugins|tools)/.*\\.cpp$") and test($wanted)))
    | .file, .command' "$database" |
    tr '\n' '\0' |
    xargs -0 -r -n 2 -P "$(nproc)" bash -c "$check" "$checks"
