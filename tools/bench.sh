#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds and runs all benchmarks, then writes docs/performance.md with its plots and the table of
# figures in README.md. Takes about ten minutes; nothing else should run on the machine meanwhile.
#   tools/bench.sh                 TMPDIR names the folder whose disk is measured
#   tools/bench.sh Copy Folder     runs these benchmarks only and keeps the other figures
# To compare edit distances with rapidfuzz-cpp, set RAPIDFUZZ_INCLUDE_DIR to its folder of headers.
# tools/performance.py without arguments writes the page, the plots and the table from the stored figures,
# for example after a change of the page's sentences.
. "$(dirname "$0")/lib.sh"

install_packages "${build_packages[@]}" libbenchmark-dev libxxhash-dev python3
configure_and_build release -DOVRABASE_BUILD_TESTS=OFF \
    ${RAPIDFUZZ_INCLUDE_DIR:+-DRAPIDFUZZ_INCLUDE_DIR="$RAPIDFUZZ_INCLUDE_DIR"}

results=build/bench
rm -rf "$results"
mkdir -p "$results"
[ $# -gt 0 ] || set -- EditDistance Escape Folder Hash Log LongText Service Start Copy Intake

for name; do
    # The repetitions of all contenders are mixed: what disturbs the machine disturbs each of them.
    repetitions=5
    [[ $name != @(Copy|Folder|Intake) ]] || repetitions=3 # these wait for the disk
    quietly "$name" "build/release/bin/${name}Benchmark" --benchmark_repetitions=$repetitions \
        --benchmark_enable_random_interleaving=true --benchmark_min_time=0.02 \
        --benchmark_out="$results/$name.json" --benchmark_out_format=json
done
tools/performance.py "$results" build/release
