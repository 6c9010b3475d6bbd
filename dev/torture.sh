#!/usr/bin/env bash
# Tortures courses, and the program with its window, with power cuts, kills, failing calls, hostile files and unusual
# surroundings, with another seed in each round: dev/torture.sh [minutes]. Ten minutes by default; at least one round.
# Prints what ran; exit code 1 on a failure.
# CUEDRILL_TORTURE_BUILD names a build folder other than build/dev, CUEDRILL_TORTURE_SEED the first seed.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"
cd "$root"

minutes=${1:-10}
[[ $# -le 1 && $minutes =~ ^[0-9]+$ ]] || die "usage: dev/torture.sh [minutes]"
build=${CUEDRILL_TORTURE_BUILD:-build/dev}
harnesses=(power_cuts kills faults hostile_courses hostile_texts environment window_kills window_power_cuts)

need_utf8
if [[ -z ${CUEDRILL_TORTURE_BUILD:-} ]]; then
    dev/setup.sh test
    quietly cmake --preset dev
fi
quietly cmake --build "$build" --target "${harnesses[@]/#/test_torture_}"

log=$(mktemp)
trap 'rm -f "$log"' EXIT
failed=0
rounds=0
seed=${CUEDRILL_TORTURE_SEED:-$(date +%s)}
first_seed=$seed
while [[ $rounds == 0 || $SECONDS -lt $((minutes * 60)) ]]; do
    for harness in "${harnesses[@]}"; do
        output=$(CUEDRILL_TORTURE_SEED=$seed "$build/tests/torture/test_torture_$harness" 2>&1) && status=0 || status=$?
        if [[ $status != 0 ]]; then
            failed=1
            say "$output" "$harness has failed; again: CUEDRILL_TORTURE_SEED=$seed $build/tests/torture/test_torture_$harness" >&2
        fi
        grep '^torture: ' <<<"$output" >>"$log" || true
    done
    rounds=$((rounds + 1))
    seed=$((seed + 1))
done

say "$rounds rounds in $((SECONDS / 60)) min $((SECONDS % 60)) s, first seed $first_seed"
# Adds up the figures of each harness.
awk '{
    for (i = 4; i <= NF; ++i) {
        split($i, figure, "=")
        key = $2 " " figure[1]
        if (!(key in sum))
            order[++count] = key
        sum[key] += figure[2]
    }
}
END { for (i = 1; i <= count; ++i) print order[i] ": " sum[order[i]] }' "$log"
exit "$failed"
