#!/usr/bin/env bash
# Installs MinGW-w64 and Wine, and cross-builds what the preset "windows" needs and Debian does
# not package: Qt Core, Gui and Test, and glog.
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
ensure_packages dpkg-dev perl make \
    g++-mingw-w64-x86-64-posix `# the thread model that has std::thread` \
    wine wine64 \
    locales # for Chinese texts in code page 936

triplet=x86_64-w64-mingw32
# Qt's build takes the compiler by this plain name.
[[ $(readlink -f "$(command -v $triplet-g++)") == *-posix ]] ||
    die "$triplet-g++ is not the posix variant; choose it with update-alternatives"

qt_version=$(source_version libqt5core5a)
glog_version=$(source_version libgoogle-glog0v6)

sources() {
    fetch_sources "qtbase-opensource-src=$qt_version" "google-glog=$glog_version"
}

# Gui is there for QImage and its PNG files: no window, no font and no other format is needed.
qt_configured() {
    qt_configure "$(source_tree qtbase-opensource-src "$qt_version")" \
        -xplatform win32-g++ -device-option CROSS_COMPILE=$triplet- \
        -qt-libpng -no-libjpeg -no-freetype -no-harfbuzz -no-feature-gif -no-feature-ico \
        -no-feature-accessibility -no-feature-vulkan -no-feature-pdf -no-feature-printer
}

qt_built() { qt_build corelib gui testlib rcc winmain; }

qt_installed() { qt_install corelib gui moc testlib rcc winmain; }

glog() {
    glog_build "$(source_tree google-glog "$glog_version")" \
        -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_C_COMPILER=$triplet-gcc-posix -DCMAKE_CXX_COMPILER=$triplet-g++-posix
}

# Copied, since the native include folder must not be on a cross compiler's path.
cli11() {
    mkdir -p "$staging$prefix"/{include,share/cmake}
    cp -r /usr/include/CLI "$staging$prefix/include/"
    cp -r /usr/share/cmake/CLI11 "$staging$prefix/share/cmake/"
}

# The compiler's own DLLs, beside Qt's: one folder to run with, and to package from.
runtime() {
    local name
    for name in libstdc++-6 libgcc_s_seh-1 libwinpthread-1; do
        cp "$($triplet-g++-posix -print-file-name=$name.dll)" "$staging$prefix/bin/"
    done
}

# Wine takes the local 8-bit encoding from the locale: this one gives code page 936.
chinese_locale() {
    mkdir -p "$staging$prefix/locale"
    localedef -i zh_CN -f UTF-8 "$staging$prefix/locale/zh_CN.UTF-8"
}

key=$(cache_key "$here/setup-windows.sh" "$here"/lib/{qt,glog}.sh \
    -- libqt5core5a libgoogle-glog0v6 libcli11-dev locales \
    g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev)
cache_build "windows-$key" sources qt_configured qt_built qt_installed glog cli11 runtime chinese_locale
print_prefix
