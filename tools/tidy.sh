#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Runs clang-tidy on the sources of the library and the examples, with the compile commands of a Clang
# build:
#   tools/tidy.sh BUILD
. "$(dirname "$0")/lib.sh"
build=$1

# Sources that this build does not compile are left out: those for Windows, and the other future.
git ls-files 'src/*.cpp' 'examples/*.cpp' | while read -r source; do
    if grep -qF "/$source\"" "$build/compile_commands.json"; then
        echo "$source"
    fi
done | xargs -r -P "$jobs" -n 1 clang-tidy-14 -p "$build" --quiet
