#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds and runs a project that contains ovrabase and has its own C++ standard and output folders. Checks
# that ovrabase keeps to these, and adds no programs, tests, -Werror or installed files to the project.
# Also checks that ovrabase refuses to be a static library.
. "$(dirname "$0")/lib.sh"

build=build/parent
rm -rf "$build"
cmake -S tests/parent -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=None -DOVRABASE="$PWD" \
    -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)"
cmake --build "$build" -j "$jobs"
(cd "$build" && programs/parent)

[ -e "$build/libraries/libovrabase.so" ] || fail "not in the output folder of the parent: libovrabase.so"
ls "$build/programs"
[ "$(ls "$build/programs")" = parent ] || fail "programs of ovrabase are built in the parent"
commands=$(grep '"command"' "$build/compile_commands.json")
! grep -v -e '-std=[a-z]*++\(23\|2b\)' <<<"$commands" || fail "a source is not compiled with the parent's standard"
! grep -e '-Werror' <<<"$commands" || fail "warnings are errors in the parent"
ctest --test-dir "$build" -N | grep -q 'Total Tests: 0' || fail "the parent has tests of ovrabase"
cmake --install "$build" --prefix "$build/stage"
[ ! -e "$build/stage" ] || fail "installed with the parent: $(find "$build/stage" -type f)"

refusal=$(cmake -S . -B build/static -DBUILD_SHARED_LIBS=OFF 2>&1 || true)
[[ $refusal == *'cannot be a static library'* ]] || fail "a static library is not refused: $refusal"
