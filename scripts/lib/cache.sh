# shellcheck shell=bash
# A keyed cache of built prefixes, outside the repository. Needs common.sh.
#
#   $cache_root/NAME-KEY          a finished prefix: complete if it exists
#   $cache_root/staging/NAME-KEY  one being built: logs, and a stamp for every finished stage
#   $cache_root/sources           Debian source packages, shared by the builds

cache_root=${KVSYNC_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/kvsync}

# cache_key FILE... -- PACKAGE...: a hash of what the files say and of the packages' versions.
cache_key() {
    local files=()
    while [[ $1 != -- ]]; do
        files+=("$1")
        shift
    done
    shift
    {
        cat "${files[@]}"
        dpkg-query -W -f '${Package} ${Version}\n' "$@"
    } | sha256sum | cut -c1-16
}

# with_lock FILE COMMAND...: runs the command while no other process holds the file.
with_lock() {
    local file=$1
    shift
    mkdir -p "${file%/*}"
    (
        flock --nonblock 9 || {
            say "waiting for another process: $file"
            flock 9
        }
        "$@"
    ) 9>"$file"
}

# cache_build NAME-KEY STAGE...: runs the stages, functions that leave their result in
# $staging$prefix, and then moves that folder to $prefix. An interrupted build goes on with the
# stage in which it stopped, so a stage must be able to run again over its own remains.
cache_build() {
    prefix=$cache_root/$1
    staging=$cache_root/staging/$1
    shift
    [[ -d $prefix ]] || with_lock "$cache_root/locks/${prefix##*/}" build_stages "$@"
}

build_stages() {
    # Another process may have built it while this one waited for the lock.
    [[ ! -d $prefix ]] || return 0

    local stage
    mkdir -p "$staging"
    for stage in "$@"; do
        [[ -e $staging/$stage.done ]] || run_stage "$stage"
    done
    mv "$staging$prefix" "$prefix"
    rm -rf "$staging"
}

run_stage() {
    local stage=$1 log=$staging/$1.log start=$SECONDS status
    # Not "if ! (...)": bash ignores set -e inside a condition.
    set +e
    (
        set -e
        cd "$staging"
        "$stage"
    ) >"$log" 2>&1 </dev/null
    status=$?
    set -e
    if ((status)); then
        tail -n 40 "$log" >&2
        die "stage $stage failed; the whole log: $log"
    fi
    touch "$staging/$stage.done"
    say "${prefix##*/}: $stage, $((SECONDS - start)) s"
}

# The one option of the scripts that fill the cache.
parse_print_prefix() {
    print_wanted=false
    case $# in
        0) return 0 ;;
        1) [[ $1 != --print-prefix ]] || print_wanted=true ;;
    esac
    $print_wanted || die "usage: ${0##*/} [--print-prefix]"
}

print_prefix() {
    if $print_wanted; then printf '%s\n' "$prefix"; fi
}
