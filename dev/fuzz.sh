#!/usr/bin/env bash
# Builds the fuzz targets of tests/fuzz and runs each of them: dev/fuzz.sh [seconds per target]
# The exit code is 1 if a target has found a fault; its input is kept in build/fuzz/crashes. The inputs that have led to new
# places of the code are kept in build/fuzz/corpus, where the next run begins.
# dev/fuzz.sh --self-test puts a fault into each target and expects that it is found.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"
cd "$root"

[[ $# == 0 || ( $# == 1 && ( $1 == --self-test || $1 =~ ^[1-9][0-9]*$ ) ) ]] ||
    die "usage: dev/fuzz.sh [seconds per target | --self-test]"

# Each target with the length of its longest input in bytes.
targets=(question_text:1024 decks:1024 like:512 cvdate:64 course:65536 kept:512 sound_courses:512 package:65536 vocabulary:2048)
made=build/fuzz
# The longest time in which a target finds the fault of the self-test, with room for a busy machine.
seconds_of_self_test=120

# For the course files of a target, which a crash leaves behind; in memory if the system has such a place.
scratch=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
log=$scratch/log
trap 'rm -rf "$scratch"' EXIT

# run_target <name> <longest input> <seconds> <corpus> <option>...: runs a target, with its output in the log.
run_target() {
    local name=$1 longest=$2 seconds=$3 corpus=$4 seeds=tests/fuzz/seeds/$1
    shift 4
    local folders=("$corpus")
    mkdir -p "$corpus"
    if [[ -d $seeds ]]; then
        folders+=("$seeds")
    fi
    # Freed memory is given back early, so that the limit on memory is one on what the target uses.
    TMPDIR=$scratch ASAN_OPTIONS=quarantine_size_mb=4:malloc_context_size=8 \
        "$made/tests/fuzz/fuzz_$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 \
        -max_len="$longest" -len_control=0 -print_final_stats=1 "$@" "${folders[@]}" >"$log" 2>&1
}

# fuzz <name> <longest input> <seconds>: runs a target and tells what has come of it.
fuzz() {
    local name=$1 found
    mkdir -p "$made/crashes"
    if run_target "$@" "$made/corpus/$name" -artifact_prefix="$made/crashes/$name-"; then
        say "$name: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") executions"
        return
    fi
    cat "$log" >&2
    found=$(sed -n 's/^.*Test unit written to //p' "$log")
    printf '%s: FAILED; the input is %s\n' "$name" "${found:-not kept}" >&2
    return 1
}

# test_target <name> <longest input>: whether a target finds the fault that is put into it.
test_target() {
    local name=$1
    if CUEDRILL_FUZZ_BREAK=1 run_target "$@" "$seconds_of_self_test" "$scratch/corpus-$name" \
        -artifact_prefix="$scratch/"; then
        printf '%s: FAILED; the fault was not found\n' "$name" >&2
        return 1
    fi
    if ! grep '^Wrong: ' "$log" >/dev/null; then
        cat "$log" >&2
        printf '%s: FAILED for another reason than the fault\n' "$name" >&2
        return 1
    fi
    say "$name: the fault is found"
}

dev/setup.sh fuzz
quietly cmake --preset fuzz
quietly cmake --build --preset fuzz

failed=0
for target in "${targets[@]}"; do
    name=${target%:*}
    longest=${target#*:}
    if [[ ${1:-} == --self-test ]]; then
        test_target "$name" "$longest" || failed=1
    else
        fuzz "$name" "$longest" "${1:-10}" || failed=1
    fi
done
exit "$failed"
