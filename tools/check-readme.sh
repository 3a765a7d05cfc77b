#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Runs the commands and projects of the README that install and use the library.
. "$(dirname "$0")/lib.sh"

# block HEADING LANGUAGE: prints the first listing in that language below the heading.
block() {
    awk -v heading="### $1" -v fence="\`\`\`$2" '
        /^#/ { below = $0 == heading }
        /^```$/ && inside { exit }
        inside
        $0 == fence && below { inside = 1 }' README.md
}

# run HEADING: writes the project of that section, if it has one, and runs the section's commands.
run() {
    local project commands
    echo "== $1"
    rm -rf my_app/build
    project=$(cd ovrabase && block "$1" cmake)
    commands=$(cd ovrabase && block "$1" sh)
    [ -n "$commands" ] || fail "the README has no commands for $1"
    if [ -n "$project" ]; then
        printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(my_app LANGUAGES CXX)' "$project" \
            >my_app/CMakeLists.txt
    fi
    bash -euxc "$commands"
}

work=$PWD/build/readme
rm -rf "$work"
mkdir -p "$work/my_app"
ln -s "$PWD" "$work/ovrabase"
cat >"$work/my_app/main.cpp" <<'END'
#include <ovrabase/platform/base.h>
#include <cstdio>

int main()
{
    std::puts(qUtf8Printable(Vyn::OvraBase::applicationName()));
}
END

CCACHE_DIR=$(ccache --get-config cache_dir)
export CCACHE_DIR HOME=$work/home
export CMAKE_GENERATOR=Ninja CMAKE_CXX_COMPILER_LAUNCHER=ccache CMAKE_BUILD_PARALLEL_LEVEL=$jobs
cd "$work"

run Install
run find_package
run pkg-config
run FetchContent
if command -v vcpkg; then
    run find_package # writes the project
    run vcpkg
else
    echo "the README's commands for vcpkg are NOT run: vcpkg is not installed" >&3
fi
cd ovrabase

diff <(sed -nE 's/^option\((OVRABASE_[A-Z_]+) .*/\1/p; s/^set\((OVRABASE_[A-Z_]+) .* CACHE .*/\1/p' CMakeLists.txt | sort) \
    <(sed -nE 's/^\| `(OVRABASE_[A-Z_]+)` .*/\1/p' README.md | sort) || fail "the README's table of options differs from CMakeLists.txt"

port=cmake/vcpkg/ovrabase
version=$(sed -n 's/.*"version": "\(.*\)".*/\1/p' $port/vcpkg.json)
grep -q "VERSION $version\$" CMakeLists.txt || fail "the port for vcpkg has version $version"
for option in $(grep -o 'OVRABASE_[A-Z_]*' $port/portfile.cmake); do
    grep -q "($option " CMakeLists.txt || fail "the port for vcpkg sets $option, which does not exist"
done
