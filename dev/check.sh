#!/usr/bin/env bash
# Checks everything: format, floors, scripts, build, tests, package, Wayland, benchmarks, fuzz targets.
# dev/check.sh --quick leaves out the build and what needs it.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"
cd "$root"

# step <name> <command>...: runs a check and goes on if it fails, so that one run shows every complaint.
failed=0
step() {
    local name=$1
    shift
    if "$@"; then
        say "$name: good"
    else
        say "$name: FAILED" >&2
        failed=1
    fi
}

check_format() {
    cpp_sources | xargs -0 --no-run-if-empty clang-format --dry-run -Werror
}

[[ $# == 0 || $* == --quick ]] || die "usage: dev/check.sh [--quick]"

dev/setup.sh check
step Format check_format
step Floors dev/check_floors
step Scripts shellcheck --external-sources run test .ci/run dev/lib.sh dev/check.sh dev/format.sh dev/fuzz.sh dev/package.sh dev/pictures.sh \
    dev/setup.sh dev/speech.sh dev/tidy.sh dev/torture.sh dev/wayland.sh
[[ $failed == 0 ]] || exit 1
if [[ $# == 0 ]]; then
    ./test
    # The debug build, because it is there; what is distributed comes from the preset run.
    step Package dev/package.sh build/dev
    step Wayland dev/wayland.sh build/dev
    # Every operation once, on a small course: only that it still works. The figures mean nothing.
    need_utf8
    step Benchmarks quietly build/dev/bench/cuedrill-bench --brief
    # Long enough to meet a gross fault; dev/fuzz.sh by itself looks for the rare ones.
    step Fuzzing dev/fuzz.sh 5
    step "Faults put into the fuzz targets" dev/fuzz.sh --self-test
    [[ $failed == 0 ]] || exit 1
fi
