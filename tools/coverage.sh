#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Runs the tests and measures which lines and branches of the library they run. Prints a summary and writes
# pages to build/coverage/html. Fails below 97 % of the lines or 90 % of the branches. gcovr.cfg lists what
# is left out, with the reasons.
. "$(dirname "$0")/lib.sh"

install_packages gcovr
[ ! -d build/coverage ] || find build/coverage -name '*.gcda' -delete # counts of an earlier run
tools/test.sh coverage
mkdir -p build/coverage/html
gcovr --config gcovr.cfg --object-directory build/coverage --html-details build/coverage/html/index.html \
    --print-summary --fail-under-line 97 --fail-under-branch 90 build/coverage | tail -n 4
