#!/usr/bin/env bash
# Builds the libFuzzer targets of tests/fuzz with clang into build/fuzz and runs each reader's
# target for SECONDS (default 60), seeded from the project's own files and the real-world files
# in ../shared/realworld. Prints executions per second, coverage and the time and memory for a
# 10 MB input per target (processor time in an uninstrumented build of the same target); exits
# non-zero when a target crashes, leaks, hangs or runs out of memory.
#
#   scripts/fuzz.sh [SECONDS] [TARGET...]      TARGET: sif order ini template group html
# (html: templates through the HTML writer, checking every style attribute it writes)
set -uo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(sif order ini template group html)
build=$repo/build/fuzz
realworld=$repo/../shared/realworld
[ -d "$realworld" ] || realworld=/work/shared/realworld

cmake -S "$repo/tests/fuzz" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ >/dev/null || exit 1
cmake --build "$build" -j2 >/dev/null || { echo "fuzz build failed" >&2; exit 1; }

# Seed files by reader; libFuzzer takes folders, so each gets a folder of copies.
declare -A patterns=(
    [sif]='*.sif' [order]='*.cif' [ini]='*.ini' [template]='*.cov *.cst *.sum' [group]='*.grp' [html]='*.cov *.cst *.sum')
seed_folder() {
    local target=$1 folder=$build/seeds/$1 pattern
    rm -rf "$folder" && mkdir -p "$folder"
    for pattern in ${patterns[$target]}; do
        find "$repo/tests/data" "$repo/examples" "$repo/resources" "$realworld" -type f \
            -name "$pattern" -size -1000k -exec cp -t "$folder" {} + 2>/dev/null
    done
    # Regression inputs found earlier are seeds too.
    [ -d "$repo/tests/data/fuzz/$target" ] && cp "$repo/tests/data/fuzz/$target"/* "$folder" 2>/dev/null
    echo "$folder"
}

# A 10 MB input made by repeating the seeds: read once, timed, with the peak memory.
big_input() {
    local seeds=$1 out=$2
    cat "$seeds"/* >"$out" 2>/dev/null
    [ -s "$out" ] || printf 'PN=X\r\n' >"$out"
    while [ "$(stat -c %s "$out")" -lt 10485760 ]; do
        cat "$out" "$out" >"$out.twice" && mv "$out.twice" "$out"
    done
    truncate -s 10485760 "$out"
}

# Scratch files of the path-only readers: memory, since the atomic writer syncs every file.
[ -d /dev/shm ] && export TMPDIR=/dev/shm
export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
status=0
printf '%-9s %10s %8s %8s %8s %10s %10s  %s\n' target execs exec/s cov ft "10MB s" "10MB MB" result
for target in "${targets[@]}"; do
    binary=$build/fuzz_$target
    seeds=$(seed_folder "$target")
    corpus=$build/corpus/$target
    crashes=$build/crashes/$target
    mkdir -p "$corpus" "$crashes"
    log=$build/$target.log
    "$binary" "$corpus" "$seeds" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=5 \
        -max_len=65536 -print_final_stats=1 -artifact_prefix="$crashes/" >"$log" 2>&1
    rc=$?
    done_line=$(grep -E "^#[0-9]+[[:space:]]+DONE" "$log" | tail -1)
    [ -n "$done_line" ] || done_line=$(grep -E "^#[0-9]+[[:space:]]" "$log" | tail -1)
    execs=$(sed -nE 's/^stat::number_of_executed_units: *([0-9]+)/\1/p' "$log")
    rate=$(sed -nE 's/^stat::average_exec_per_sec: *([0-9]+)/\1/p' "$log")
    cov=$(sed -nE 's/.* cov: ([0-9]+).*/\1/p' <<<"$done_line")
    ft=$(sed -nE 's/.* ft: ([0-9]+).*/\1/p' <<<"$done_line")

    big=$build/big-$target.input
    big_input "$seeds" "$big"
    # Timed in the uninstrumented build: the program's own speed, not the sanitizers'.
    read -r big_s big_mb < <("$build/read_$target" "$big" 2>/dev/null)
    big_rc=$?
    # The hang test itself runs in the instrumented build, under the fuzzing limits.
    "$binary" -rss_limit_mb=2048 -timeout=20 "$big" >"$build/$target.big.log" 2>&1 || big_rc=1

    result=ok
    if [ $rc -ne 0 ]; then
        result="FAILED (see $log, inputs in $crashes)"
        status=1
    elif [ $big_rc -ne 0 ] || [ -z "$big_s" ]; then
        result="FAILED on the 10 MB input (see $build/$target.big.log)"
        status=1
    elif awk -v s="$big_s" 'BEGIN { exit !(s >= 1) }'; then
        result="TOO SLOW: a 10 MB input must read in under a second"
        status=1
    fi
    printf '%-9s %10s %8s %8s %8s %10.2f %10s  %s\n' "$target" "${execs:-?}" "${rate:-?}" \
        "${cov:-?}" "${ft:-?}" "${big_s:-0}" "${big_mb:-?}" "$result"
done
exit $status
