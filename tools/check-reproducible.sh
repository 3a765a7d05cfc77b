#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds and installs the library in two folders and compares the installed files byte for byte.
. "$(dirname "$0")/lib.sh"

# With these, ccache would give the second folder the results of the first.
unset CCACHE_BASEDIR CCACHE_NOHASHDIR
work=$PWD/build/reproducible
rm -rf "$work"

for folder in "$work/one" "$work/the other/one"; do
    mkdir -p "$folder"
    git ls-files -z --cached --others --exclude-standard CMakeLists.txt LICENSE '*.md' cmake src | xargs -0 cp --parents -t "$folder"
    # A unity build takes half the time and has the same flags.
    cmake -S "$folder" -B "$folder/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_UNITY_BUILD=ON \
        -DOVRABASE_BUILD_TESTS=OFF -DOVRABASE_BUILD_EXAMPLES=OFF
    cmake --build "$folder/build" -j "$jobs"
    cmake --install "$folder/build" --prefix "$folder/stage"
done

diff -r "$work/one/stage" "$work/the other/one/stage"
