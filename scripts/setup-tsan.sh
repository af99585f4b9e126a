#!/usr/bin/env bash
# Builds Qt Core, Qt Test and glog with the thread sanitizer, for the preset "tsan": over
# libraries that it does not see into, the sanitizer reports races that are none.
# Silent when the cache has them. --print-prefix prints where they are.
set -euo pipefail

here=$(dirname "$(readlink -f "$0")")
# shellcheck source=lib/common.sh
. "$here/lib/common.sh"
# shellcheck source=lib/cache.sh
. "$here/lib/cache.sh"
# shellcheck source=lib/sources.sh
. "$here/lib/sources.sh"
# shellcheck source=lib/qt.sh
. "$here/lib/qt.sh"
# shellcheck source=lib/glog.sh
. "$here/lib/glog.sh"

parse_print_prefix "$@"

"$here/setup.sh"
ensure_packages dpkg-dev perl make

qt_version=$(source_version libqt5core5a)
glog_version=$(source_version libgoogle-glog0v6)
qt_source=$(source_tree qtbase-opensource-src "$qt_version")
glog_source=$(source_tree google-glog "$glog_version")
# Line numbers are enough for a readable report.
debug_info=-g1

sources() {
    fetch_sources "qtbase-opensource-src=$qt_version" "google-glog=$glog_version"
}

# Three places where Qt is in order on this processor and the sanitizer cannot see it:
# - A container asks "am I the only owner of these data?" by a relaxed load and then writes in
#   place. A write cannot overtake the branch it depends on, but the sanitizer does not know such
#   dependencies, and would report every container that was copied under a lock and dropped
#   outside. An acquiring load shows it the order that is there.
# - The set-up of the regular expressions' own compiler has races that do no harm, and the code it
#   makes is hidden from the sanitizer: the expressions are interpreted instead.
# - A contended read-write lock is looked at again by a relaxed load, once its mutex is held. On
#   weakly ordered processors that is a race, which later versions of Qt have mended in this way.
qt_patch() {
    rm -rf qt-source
    cp -al "$qt_source" qt-source # links: only the patched files become our own
    patch_line src/corelib/tools/qrefcount.h '/bool isShared()/,/}/s/loadRelaxed/loadAcquire/'
    patch_line src/corelib/thread/qreadwritelock.cpp \
        's/if (d != d_ptr.loadRelaxed())/if (d != d_ptr.loadAcquire())/'
    patch_line src/3rdparty/pcre2/pcre2.pro 's/^uikit|qnx|winrt: //'
}

# patch_line FILE SED-SCRIPT: fails if the script finds nothing to change.
patch_line() {
    sed -i "$2" "qt-source/$1"
    ! cmp --silent "$qt_source/$1" "qt-source/$1" || die "nothing to patch in $1"
}

qt_configured() {
    qt_configure "$staging/qt-source" -sanitize thread -no-gui -no-strip \
        "QMAKE_CFLAGS+=$debug_info" "QMAKE_CXXFLAGS+=$debug_info"
}

qt_built() { qt_build corelib testlib rcc; }

qt_installed() { qt_install corelib moc testlib rcc; }

glog() { glog_build "$glog_source" -DCMAKE_CXX_FLAGS="-fsanitize=thread $debug_info"; }

# The two claims that everything rests on: no report about correct code, one about a race.
smoke() {
    cmake -S "$here/smoke/tsan" -B smoke -G Ninja -DCMAKE_PREFIX_PATH="$staging$prefix" \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS=-fsanitize=thread
    ninja -C smoke -j2
    # With TZ unset the C library reads the time zone anew for every line that glog writes, under
    # a lock that the sanitizer does not see.
    export TZ=UTC
    smoke/correct
    local status=0
    TSAN_OPTIONS=exitcode=66 smoke/racy || status=$?
    ((status == 66)) || die "the race was not reported"
}

key=$(cache_key "$here/setup-tsan.sh" "$here"/lib/{qt,glog}.sh "$here"/smoke/tsan/* \
    -- g++ libtsan2 libqt5core5a libgoogle-glog0v6)
cache_build "tsan-$key" sources qt_patch qt_configured qt_built qt_installed glog smoke
print_prefix
