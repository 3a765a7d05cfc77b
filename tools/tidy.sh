#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Runs clang-tidy over the sources of the library and the examples with the compile commands of a
# finished Clang build:
#   tools/tidy.sh BUILD
# A source without a complaint is not checked again while everything that clang-tidy sees is the same,
# see tools/tidy.py. Those results are kept in ${OVRABASE_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/ovrabase}/tidy
# until no run has used them for 30 days.
. "$(dirname "$0")/lib.sh"

install_packages clang-tidy-14 python3
# tidy.py leaves out the sources that this build does not compile: those in windows/, and either
# services/std or services/stlab.
git ls-files 'src/*.cpp' 'examples/*.cpp' | tools/tidy.py "$1" \
    "${OVRABASE_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/ovrabase}/tidy" "$jobs" >&3
