#!/bin/bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds Qt (Core and Gui), fmt, spdlog and Google Benchmark for Windows from Debian's source packages
# with MinGW-w64. Prints the folder in which Qt, fmt and spdlog are installed. Google Benchmark is installed
# in the folder "benchmark" beside that folder. Both folders are kept for the next call, below
# ${OVRABASE_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/ovrabase}. The first call takes ten minutes or more
# on two cores.
set -euo pipefail

root=$(cd "$(dirname "$0")/../.." && pwd)
# The build runs moc and rcc of this machine's Qt, so the Qt for Windows must have the same version.
qtVersion=$(dpkg-query -W -f '${Version}' qt6-base-dev | sed 's/[+-].*//')
cache=${OVRABASE_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/ovrabase}/mingw-qt-$qtVersion
prefix=$cache/prefix # created by a rename at the end, so it is complete if it exists
benchmark=$cache/benchmark # likewise
work=$cache/work

# Runs apt-get with a package list of its own: the source packages of the machine's Debian mirrors.
apt_with_sources() {
    apt-get -q -y -o Dir::Etc::SourceList="$work/sources.list" -o Dir::Etc::SourceParts=/dev/null \
        -o Dir::State::Lists="$work/lists" -o APT::Sandbox::User=root "$@"
}

# get_sources PACKAGE...: unpacks the source packages in $work, which becomes the current folder.
get_sources() {
    mkdir -p "$work/lists/partial"
    if [ -z "$(apt-get indextargets 'Created-By: Packages' 'Origin: Debian')" ]; then
        apt-get -q update
    fi
    apt-get indextargets 'Created-By: Packages' 'Origin: Debian' \
        --format "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" \
        | sort -u >"$work/sources.list"
    apt_with_sources update
    cd "$work"
    apt_with_sources --only-source source "$@"
}

# build NAME [CMAKE OPTION...]: builds the unpacked source package NAME and installs it.
build() {
    local name=$1
    shift
    cmake -S "$(echo "$work/$name"-*/)" -B "$work/build-$name" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" \
        -DOVRABASE_WINDOWS_PREFIX="$work/prefix" -DCMAKE_INSTALL_PREFIX="$work/prefix" \
        -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON "$@"
    cmake --build "$work/build-$name" --parallel "${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}"
    cmake --install "$work/build-$name" --strip
}

build_all() {
    rm -rf "$work"
    get_sources fmtlib spdlog "qt6-base=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)"
    build fmtlib -DFMT_TEST=OFF -DFMT_DOC=OFF
    build spdlog -DSPDLOG_FMT_EXTERNAL=ON -DSPDLOG_BUILD_EXAMPLE=OFF
    # tabletevent: for licence reasons, Debian's source package lacks a header that it needs.
    # pkg_config: pkg-config would find libraries of this machine.
    local features=(sql network dbus widgets xml testlib printsupport concurrent opengl opengl_desktop
        vulkan tabletevent direct2d directwrite directwrite3 pkg_config system_zlib)
    features=("${features[@]/#/-DFEATURE_}")
    build qt6-base -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DINPUT_opengl=no "${features[@]/%/=OFF}"
    mv "$work/prefix" "$prefix"
    rm -rf "$work"
}

build_benchmark() {
    rm -rf "$work"
    get_sources benchmark
    # GIT_VERSION: Debian's sources do not ask git for the version, and cannot be configured without one.
    build benchmark -DBUILD_SHARED_LIBS=OFF -DGIT_VERSION=0.0.0 -DBENCHMARK_ENABLE_TESTING=OFF \
        -DBENCHMARK_ENABLE_WERROR=OFF -DBENCHMARK_INSTALL_DOCS=OFF
    mv "$work/prefix" "$benchmark"
    rm -rf "$work"
}

mkdir -p "$cache"
exec 9>"$cache/lock"
flock 9
log=$cache/build.log
exec 3>&2
trap '[ $? = 0 ] || tail -n 30 "$log" >&3' EXIT
if [ ! -d "$prefix" ]; then
    echo "Building Qt $qtVersion for Windows (ten minutes or more), see $log" >&2
    build_all >"$log" 2>&1
fi
[ -d "$benchmark" ] || build_benchmark >"$log" 2>&1
echo "$prefix"
