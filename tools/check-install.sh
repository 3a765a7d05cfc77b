#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Installs a build into a stage, then builds and runs a project that finds it there:
#   tools/check-install.sh BUILD
. "$(dirname "$0")/lib.sh"
build=$1

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cmake --install "$build" --prefix "$stage/usr"

# A moved package must still be found: nothing in it may point back to where it was built.
mv "$stage/usr" "$stage/moved"
cmake -S tests/consumer -B "$stage/build" -G Ninja -DCMAKE_PREFIX_PATH="$stage/moved"
cmake --build "$stage/build"
ctest --test-dir "$stage/build" --output-on-failure --no-tests=error

PKG_CONFIG_PATH=$(dirname "$(find "$stage/moved" -name ovrabase.pc)")
export PKG_CONFIG_PATH
grep -q "VERSION $(pkg-config --modversion ovrabase)" CMakeLists.txt
read -ra flags < <(pkg-config --cflags --libs ovrabase spdlog)
"${CXX:-c++}" -fPIC tests/consumer/main.cpp "${flags[@]}" \
    -Wl,-rpath,"$(pkg-config --variable=libdir ovrabase)" -o "$stage/by-pkg-config"
"$stage/by-pkg-config"
