# shellcheck shell=bash disable=SC2154 # prefix and staging: set by cache_build
# glog, built from Debian's source package: a stage for cache_build. Needs cache.sh.

# glog_build TREE OPTION...: builds in ./glog and installs to $staging$prefix.
glog_build() {
    local tree=$1
    shift
    cmake -S "$tree" -B glog -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
        -DBUILD_SHARED_LIBS=ON -DBUILD_TESTING=OFF \
        -DWITH_GFLAGS=OFF -DWITH_GTEST=OFF -DWITH_UNWIND=OFF "$@"
    ninja -C glog -j2
    DESTDIR=$staging cmake --install glog
}
