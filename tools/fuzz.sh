#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Runs the fuzzers: first with the inputs in fuzz/corpus, then with new ones.
#   tools/fuzz.sh SECONDS [TARGET...]    runs each target for that time; without names, all targets
# Inputs that fail are kept in build/clang/findings, new inputs that reach more code in
# build/clang/corpus.
. "$(dirname "$0")/lib.sh"
seconds=$1
shift

install_packages "${build_packages[@]}" clang-14 clang libclang-rt-14-dev
configure_and_build clang -DOVRABASE_BUILD_FUZZERS=ON

# fuzz TARGET SECONDS
fuzz() {
    local name=$1 seconds=$2 build=build/clang log=build/clang/findings/$1.log
    local options=(-timeout=10 -rss_limit_mb=4096 -max_len=4096 "-artifact_prefix=$build/findings/$name-")
    [ ! -f "fuzz/dictionaries/$name.dict" ] || options+=("-dict=fuzz/dictionaries/$name.dict")
    mkdir -p "$build/corpus/$name" "$build/findings"
    if "$build/bin/$name" "${options[@]}" -runs=0 "fuzz/corpus/$name" >"$log" 2>&1 &&
        "$build/bin/$name" "${options[@]}" -max_total_time="$seconds" \
            "$build/corpus/$name" "fuzz/corpus/$name" >>"$log" 2>&1; then
        printf '  %-44s %s\n' "$name" "$(grep -o 'Done.*' "$log" | tail -n 1)"
    else
        cat "$log"
        printf '  %-44s FAILED\n' "$name"
        return 1
    fi
}
export -f fuzz

if [ $# -eq 0 ]; then
    mapfile -t targets < <(basename -s .cpp fuzz/*Fuzzer.cpp)
    set -- "${targets[@]}"
fi
printf '%s\n' "$@" | xargs -P "$jobs" -I '{}' bash -c "fuzz '{}' $seconds"
