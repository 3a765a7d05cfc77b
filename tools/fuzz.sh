#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Replays the inputs in fuzz/corpus, then looks for new ones that break a property:
#   tools/fuzz.sh SECONDS [TARGET...]
# SECONDS is about the time of the whole search, without the build and the replay. The named targets share
# it; without names, all targets do. Each processor runs one target at a time; if there are three
# processors or more, one stays free. Prints the
# executions and the findings of each target. A target ends at its first finding. Inputs that end in a
# finding are kept in build/clang/findings. New inputs that reach more code are kept in
# build/clang/corpus, and the next run begins with them.
. "$(dirname "$0")/lib.sh"
[[ ${1:-} =~ ^[0-9]+$ ]] || fail "how many seconds? See the top of $0"
seconds=$1
shift

install_packages "${build_packages[@]}" clang-14 clang libclang-rt-14-dev
configure_and_build clang -DOVRABASE_BUILD_FUZZERS=ON

# fuzz TARGET SECONDS: prints target, executions, executions in a second, findings.
fuzz() {
    local name=$1 seconds=$2 build=build/clang log=build/clang/findings/$1.log findings=0 options
    options=(-timeout=10 -rss_limit_mb=4096 -max_len=4096 -print_final_stats=1
        "-artifact_prefix=$build/findings/$name-")
    [ ! -f "fuzz/dictionaries/$name.dict" ] || options+=("-dict=fuzz/dictionaries/$name.dict")
    mkdir -p "$build/corpus/$name"
    if ! "$build/bin/$name" "${options[@]}" -runs=0 "fuzz/corpus/$name" >"$log" 2>&1 ||
        ! "$build/bin/$name" "${options[@]}" -max_total_time="$seconds" \
            "$build/corpus/$name" "fuzz/corpus/$name" >>"$log" 2>&1; then
        findings=1
        cat "$log" >&2
    fi
    awk -v name="$name" -v findings="$findings" '
        /^stat::number_of_executed_units/ { runs += $2 }
        /^stat::average_exec_per_sec/ { rate = $2 }
        END { printf "  %-28s %14d %10d %9d\n", name, runs, rate, findings }' "$log"
}
export -f fuzz

if [ $# -eq 0 ]; then
    mapfile -t targets < <(basename -s .cpp fuzz/*Fuzzer.cpp)
    set -- "${targets[@]}"
fi
each=$((seconds * (jobs < $# ? jobs : $#) / $#))
each=$((each > 0 ? each : 1))
mkdir -p build/clang/findings
echo "  each target for $each s"
printf '  %-28s %14s %10s %9s\n' target executions "a second" findings
printf '%s\n' "$@" | xargs -P "$jobs" -I '{}' bash -c "fuzz '{}' $each" \
    | tee build/clang/findings/table
awk '{ runs += $2; findings += $4 }
    END { printf "  %-28s %14d %10s %9d\n", "all", runs, "", findings; exit findings > 0 }' build/clang/findings/table
