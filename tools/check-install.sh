#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Installs a Release build, builds a project with a moved copy of the installation, and uninstalls:
#   tools/check-install.sh BUILD
. "$(dirname "$0")/lib.sh"
build=$1

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cmake --install "$build" --prefix "$stage/usr"

for file in include/ovrabase/export.h share/ovrabase/{copyright,translations/ovrabase.ts} \
    share/doc/ovrabase/{copyright,README.md,CHANGELOG.md,docs/files.md,docs/images/layers.svg}; do
    [ -s "$stage/usr/$file" ] || fail "missing or empty: $file"
done
! grep -rlF -e "$PWD" -e "$stage" "$stage/usr" || fail "these files contain a path of this machine"

# The template for translations must have the texts and contexts of the sources.
"$(qmake6 -query QT_HOST_BINS)/lupdate" -silent -no-obsolete -locations none src/ovrabase/include src/ovrabase/src \
    -ts "$stage/ovrabase.ts"
diff "$stage/ovrabase.ts" "$stage/usr/share/ovrabase/translations/ovrabase.ts"

# The package must work after it is moved.
cp -a "$stage/usr" "$stage/moved"
for standard in 20 23; do
    cmake -S tests/consumer -B "$stage/build" -G Ninja -DCMAKE_PREFIX_PATH="$stage/moved" -DCMAKE_CXX_STANDARD=$standard
    cmake --build "$stage/build"
    ctest --test-dir "$stage/build" --output-on-failure --no-tests=error
done

# by_pkg_config FOLDER STANDARD: builds and runs the consumer with the .pc file below FOLDER.
by_pkg_config() {
    local flags
    PKG_CONFIG_PATH=$(dirname "$(find "$1" -name ovrabase.pc)")
    export PKG_CONFIG_PATH
    read -ra flags < <(pkg-config --cflags --libs ovrabase spdlog)
    "${CXX:-c++}" -std="$2" -fPIC tests/consumer/main.cpp "${flags[@]}" \
        -Wl,-rpath,"$(pkg-config --variable=libdir ovrabase)" -o "$stage/by-pkg-config"
    (cd "$stage" && ./by-pkg-config)
}
by_pkg_config "$stage/moved" c++23
grep -q "VERSION $(pkg-config --modversion ovrabase)" CMakeLists.txt
[[ $(pkg-config --cflags ovrabase) != *-std* ]] || fail "the .pc file sets the caller's standard"
refusal=$(by_pkg_config "$stage/moved" c++17 2>&1 || true)
[[ $refusal == *'error "ovrabase needs C++20 or later'* ]] || fail "C++17 is not refused: $refusal"

cmake --build "$build" --target uninstall
left=$(find "$stage/usr" ! -type d -o -name ovrabase)
[ -z "$left" ] || fail "not uninstalled: $left"

# The .pc file must work when the libraries are installed outside of the prefix.
cmake -S . -B "$stage/absolute" -G Ninja -DOVRABASE_BUILD_TESTS=OFF -DCMAKE_INSTALL_PREFIX="$stage/prefix" \
    -DCMAKE_INSTALL_LIBDIR="$stage/libraries"
mv "$stage/moved/lib" "$stage/libraries"
mv "$stage/moved" "$stage/prefix"
cp "$stage/absolute/src/ovrabase/ovrabase.pc" "$stage/libraries/pkgconfig"
by_pkg_config "$stage/libraries" c++20
