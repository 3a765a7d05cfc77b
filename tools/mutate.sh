#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Puts COUNT small faults into a copy of the library, one at a time, and prints those that no test of the
# same folder notices (for files: no test of tests/files and tests/faults):
#   tools/mutate.sh COUNT [--seed NUMBER] [--only PART_OF_A_PATH]
# Takes about 15 seconds per fault.
. "$(dirname "$0")/lib.sh"

install_packages "${build_packages[@]}" "${test_packages[@]}" git python3
exec python3 tools/mutate.py "$@"
