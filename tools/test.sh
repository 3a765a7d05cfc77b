#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Installs what is missing on Debian 12, builds the library and runs the tests.
. "$(dirname "$0")/lib.sh"

install_packages "${build_packages[@]}" "${test_packages[@]}"
configure_and_build dev
ctest --preset dev --output-on-failure -j "$jobs"
# The faults that the tests cannot provoke on this machine.
grep '^NOT TESTED' build/dev/Testing/Temporary/LastTest.log || true
