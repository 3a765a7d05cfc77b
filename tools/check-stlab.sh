#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds the library with OVRABASE_WITH_STLAB=OFF and, if CMake finds stlab, ON. Checks the summary of
# the configuration, the package's version file and its component "stlab".
. "$(dirname "$0")/lib.sh"

configure() {
    cmake -S . -B "build/stlab-$1" -G Ninja -DCMAKE_BUILD_TYPE=Release -DOVRABASE_WITH_STLAB="$1" \
        -DOVRABASE_BUILD_TESTS=OFF -DOVRABASE_BUILD_EXAMPLES=OFF \
        -DOVRABASE_WARNINGS_AS_ERRORS=ON # as in the preset "release", so that ccache has the objects
}

# use SETTING [COMPONENT]: builds and runs the consumer, which asks for the component.
use() {
    local consumer=$PWD/build/stlab-$1/consumer
    rm -rf "$consumer"
    cmake -S tests/consumer -B "$consumer" -G Ninja -DCMAKE_PREFIX_PATH="$PWD/build/stlab-$1/stage" \
        -DOVRABASE_COMPONENTS="${2:-}" && cmake --build "$consumer" && "$consumer/consumer"
}

# try SETTING SUMMARY
try() {
    local build=build/stlab-$1 version
    configure "$1" | grep "Vyn::future<void> is built on $2" || fail "the summary does not name $2"
    cmake --build "$build" -j "$jobs"
    cmake --install "$build" --prefix "$build/stage"
    version=$(find "$build/stage" -name ovrabaseConfigVersion.cmake)
    grep -qx "set(ovrabase_HAS_STLAB $1)" "$version" || fail "$version does not have ovrabase_HAS_STLAB $1"
    use "$1"
}

try OFF "the standard library"
refusal=$(use OFF stlab 2>&1 || true)
[[ $refusal == *'built without stlab'* ]] || fail "the component stlab is not refused: $refusal"

if configure ON; then
    try ON stlab
    use ON stlab
else
    grep -q '^stlab_DIR:PATH=stlab_DIR-NOTFOUND$' build/stlab-ON/CMakeCache.txt || fail "CMake finds stlab, but the configuration fails"
    echo "OVRABASE_WITH_STLAB=ON is NOT tested: CMake finds no stlab" >&3
fi
