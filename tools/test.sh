#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Installs what is missing on Debian 12, builds the library and runs the tests: tools/test.sh [PRESET]
. "$(dirname "$0")/lib.sh"
preset=${1:-dev}

install_packages "${build_packages[@]}" "${test_packages[@]}"
configure_and_build "$preset"
ctest --preset "$preset" -j "$jobs"
# What was not tested, and why: for example, a fault that the tests cannot provoke on this machine.
grep '^NOT TESTED' "build/$preset/Testing/Temporary/LastTest.log" || true
