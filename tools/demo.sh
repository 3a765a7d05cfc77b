#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds the library and runs asset_intake, an application that takes files into an asset library.
#   tools/demo.sh [--list] [SOURCE LIBRARY]
# Without folders, it copies the icons and pixmaps of this system to a temporary library.
arguments=()
for argument; do
    [[ $argument == -* ]] || argument=$(realpath -m -- "$argument")
    arguments+=("$argument")
done
. "$(dirname "$0")/lib.sh"

install_packages "${build_packages[@]}" adwaita-icon-theme # icons for a call without folders
quietly "configure" cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DOVRABASE_BUILD_TESTS=OFF -DOVRABASE_WARNINGS_AS_ERRORS=ON
quietly "build" cmake --build build/demo -j "$jobs"
exec build/demo/bin/asset_intake "${arguments[@]}"
