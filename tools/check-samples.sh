#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Compiles the C++ samples of the pages (README.md is one) and the headers, and runs them. The comment in
# tools/extract-samples.py says which samples are not run, and which are not compiled either. Then builds
# and runs examples/minimal_host as a project of its own. All of them use the library of a build:
#   tools/check-samples.sh BUILD
. "$(dirname "$0")/lib.sh"
build=$1

install_packages python3 "${build_packages[@]}"
work=$PWD/build/samples # a fixed path, so that ccache finds earlier results
rm -rf "$work"
cmake --install "$build" --prefix "$work/usr" >/dev/null
tools/extract-samples.py "$work/sources"

# build_against_stage SOURCE NAME [CMAKE OPTION...]
build_against_stage() {
    local source=$1 name=$2
    shift 2
    quietly "configure $name" cmake -S "$source" -B "$work/$name" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
        -DCMAKE_PREFIX_PATH="$work/usr" -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@"
    quietly "build $name" cmake --build "$work/$name" -j "$jobs"
}
build_against_stage tests/samples samples -DSAMPLES="$work/sources"
ctest --test-dir "$work/samples" --output-on-failure --no-tests=error -j "$jobs"
build_against_stage examples/minimal_host minimal_host
"$work/minimal_host/minimal_host"
