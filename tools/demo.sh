#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Sets up, builds and shows the library at work: an asset intake of real files.
#   tools/demo.sh [SOURCE LIBRARY]
# Without arguments it takes the images and icons that the machine has into a fresh folder.
folders=()
for folder; do
    folders+=("$(realpath -m -- "$folder")")
done
. "$(dirname "$0")/lib.sh"

install_packages "${build_packages[@]}" adwaita-icon-theme # some icons at least
quietly "configure" cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DOVRABASE_BUILD_TESTS=OFF -DOVRABASE_WARNINGS_AS_ERRORS=ON
quietly "build" cmake --build build/demo -j "$jobs"
exec build/demo/bin/asset_intake "${folders[@]}"
