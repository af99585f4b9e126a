# shellcheck shell=bash disable=SC2154 # prefix and staging: set by cache_build
# The few parts of Qt that are used here, built from Debian's source package: stages for
# cache_build. Needs common.sh and cache.sh.

qt_common_options=(
    -opensource -confirm-license -release -shared -silent -ccache -pch
    -nomake examples -nomake tests
    -no-widgets -no-dbus -no-opengl -no-openssl -no-icu -no-glib
    -no-feature-network -no-feature-sql -no-feature-xml -no-feature-concurrent
    -qt-zlib -qt-pcre -qt-doubleconversion
)

# Lets ccache take files that are compiled with a precompiled header, and find them again when the
# build folder has another name because the key has changed.
qt_make() {
    CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_BASEDIR=$staging CCACHE_NOHASHDIR=1 \
        make -j2 "$@"
}

# qt_configure TREE OPTION...: configures in ./qt, anew.
qt_configure() {
    local tree=$1
    shift
    rm -rf qt
    mkdir qt
    cd qt || return
    MAKEFLAGS=-j2 "$tree/configure" -prefix "$prefix" "${qt_common_options[@]}" "$@"
    qt_make sub-src-qmake_all
}

# qt_build PART...: builds in ./qt; parts are folders of Qt's src, such as corelib.
qt_build() {
    qt_make -C qt/src "${@/#/sub-}"
}

# qt_install PART...: installs to $staging$prefix, with what Qt's CMake files and qmake look for.
qt_install() {
    local parts=("${@/#/sub-}")
    qt_make -C qt/src INSTALL_ROOT="$staging" "${parts[@]/%/-install_subtargets}"
    qt_make -C qt INSTALL_ROOT="$staging" sub-qmake-qmake-aux-pro-install_subtargets install_mkspecs
}
