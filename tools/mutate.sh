#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Plants COUNT small faults in the library and prints those that no test notices:
#   tools/mutate.sh COUNT [--seed NUMBER] [--only PART_OF_A_PATH]
# Takes about a quarter of a minute a fault.
. "$(dirname "$0")/lib.sh"

install_packages "${build_packages[@]}" "${test_packages[@]}" git python3
exec python3 tools/mutate.py "$@"
