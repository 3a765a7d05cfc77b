#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Runs clang-tidy over the project with the compile commands of a Clang build: tools/tidy.sh BUILD
. "$(dirname "$0")/lib.sh"
build=$1

# What the build does not compile (the Windows side, the other future) its own compiler checks.
git ls-files 'src/*.cpp' 'examples/*.cpp' | while read -r source; do
    if grep -qF "/$source\"" "$build/compile_commands.json"; then
        echo "$source"
    fi
done | xargs -r -P "$jobs" -n 1 clang-tidy-14 -p "$build" --quiet
