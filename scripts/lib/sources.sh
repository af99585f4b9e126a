# shellcheck shell=bash disable=SC2154 # cache_root: set by cache.sh
# Debian source packages, unpacked and patched. Needs common.sh and cache.sh.

sources_root=$cache_root/sources

# Prints the folder of a source package that fetch_sources has unpacked.
source_tree() { printf '%s\n' "$sources_root/$1_$2"; }

# fetch_sources NAME=VERSION...: unpacks those that are not there yet.
fetch_sources() {
    with_lock "$cache_root/locks/sources" fetch_missing_sources "$@"
}

fetch_missing_sources() {
    local item wanted=() work=$sources_root/partial
    for item in "$@"; do
        [[ -d $(source_tree "${item%%=*}" "${item#*=}") ]] || wanted+=("$item")
    done
    ((${#wanted[@]})) || return 0

    rm -rf "$work"
    mkdir -p "$work"
    private_source_lists "$work/apt"
    # A third party's list may offer no sources; what counts is that those wanted are found.
    apt_private "$work/apt" update || true
    for item in "${wanted[@]}"; do
        mkdir "$work/item"
        (cd "$work/item" && apt_private "$work/apt" source --download-only "$item") ||
            die "no source of $item; if it is outdated, upgrade the installed packages"
        dpkg-source --no-check -x "$work"/item/*.dsc "$work/tree"
        mv "$work/tree" "$(source_tree "${item%%=*}" "${item#*=}")"
        rm -r "$work/item"
    done
    rm -rf "$work"
}

# Writes source lists made from the machine's own package lists, which stay as they are.
private_source_lists() {
    local list
    mkdir -p "$1"/{parts,lists/partial,cache/archives/partial}
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [[ -e $list ]] || continue
        sed -n 's/^deb[[:space:]]/deb-src /p' "$list" >"$1/parts/${list##*/}"
        # sources.list itself has no suffix that apt would look for among the parts.
        [[ $list == *.d/* ]] || mv "$1/parts/sources.list" "$1/parts/main.list"
    done
    for list in /etc/apt/sources.list.d/*.sources; do
        [[ -e $list ]] || continue
        sed 's/^Types:.*/Types: deb-src/' "$list" >"$1/parts/${list##*/}"
    done
}

apt_private() {
    local state=$1
    shift
    # APT::Sandbox::User: apt's own user may not be able to write below our cache folder.
    apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$state/parts" \
        -o Dir::State::Lists="$state/lists" -o Dir::Cache="$state/cache" \
        -o APT::Sandbox::User=root "$@"
}
