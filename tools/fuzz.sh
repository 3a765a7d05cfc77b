#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Runs each fuzzer of a build for a while: tools/fuzz.sh BUILD SECONDS
. "$(dirname "$0")/lib.sh"
build=$1 seconds=$2

found=0
for fuzzer in "$build"/bin/*Fuzzer; do
    found=1
    work=$(mktemp -d)
    echo "== $fuzzer"
    "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 -max_len=4096 \
        -artifact_prefix="$work/" "$work"
    rm -rf "$work"
done
[ "$found" -eq 1 ]
