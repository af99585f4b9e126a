#!/usr/bin/env bash
# Installs the Debian packages that native builds, checks and tests need.
# Silent, and a matter of milliseconds, when all are there.
set -euo pipefail

here=$(dirname "$(readlink -f "$0")")
# shellcheck source=lib/common.sh
. "$here/lib/common.sh"

packages=(
    g++
    cmake
    ninja-build
    ccache
    git
    pkg-config

    qtbase5-dev        # Core; Gui for the PNG files that the tools write; Test
    libgoogle-glog-dev
    libcli11-dev
    nlohmann-json3-dev # fault plans of the simulator
    googletest         # sources, built along with the tests
    libbenchmark-dev

    clang              # second compiler; fuzzers; the Microsoft layout checks
    libclang-rt-dev    # its sanitizers and libFuzzer
    clang-format
    clang-tidy
    llvm               # llvm-symbolizer for sanitizer reports, llvm-readobj for exports
    shellcheck
    jq                 # reads the summaries of kvsync
)

ensure_packages "${packages[@]}"
