#!/usr/bin/env bash
# Runs clang-tidy over the project with the compile commands of a Clang build: tools/tidy.sh BUILD
. "$(dirname "$0")/lib.sh"
build=$1

# What the build does not compile (the Windows side) is checked by its own compiler.
git ls-files 'src/*.cpp' 'examples/*.cpp' |
    grep -v '/windows/' |
    xargs -P "$jobs" -n 1 clang-tidy-14 -p "$build" --quiet
