# shellcheck shell=bash
# Sourced by every script: messages, and Debian packages by name.

# File names beyond ASCII are part of what is tested, and a bare machine has no locale that knows them.
export LC_ALL=C.UTF-8

say() { printf '%s\n' "$*" >&2; }

die() {
    say "error: $*"
    exit 1
}

as_root() {
    if ((EUID == 0)); then "$@"; else sudo "$@"; fi
}

# Prints those of the named packages that are not installed.
missing_packages() {
    comm -23 <(printf '%s\n' "$@" | sort -u) <(
        # dpkg-query complains about names it never heard of; to us they are simply missing.
        dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' "$@" 2>/dev/null |
            sed -n 's/^.i *//p' | sort -u
    )
}

# Installs what is missing of the named packages; silent when nothing is.
ensure_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0

    say "installing: ${missing[*]}"
    apt_quietly update
    apt_quietly install -y --no-install-recommends "${missing[@]}"
}

# apt-get fills a screen when all is well, so its output is shown only when it fails.
apt_quietly() {
    local output
    output=$(as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -o DPkg::Lock::Timeout=600 "$@" </dev/null 2>&1) ||
        die "apt-get $1 failed:"$'\n'"$output"
}

# Prints the version of the source that an installed package was built from.
source_version() {
    dpkg-query -W -f '${source:Version}' "$1"
}

# Compiles through ccache, so that a second checkout finds what the first one compiled. Call it in
# the root of the checkout.
use_ccache() {
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
}

# configure PRESET [cmake options...]: tells what it does only if it fails.
configure() {
    mkdir -p build
    cmake --preset "$@" >"build/$1.log" 2>&1 || {
        cat "build/$1.log" >&2
        return 1
    }
}

# stage NAME COMMAND...: says what begins and, at its end, how many seconds it took.
stage() {
    local name=$1 begin=$SECONDS
    shift
    echo "== $name"
    "$@"
    echo "   $name: $((SECONDS - begin)) s"
}
