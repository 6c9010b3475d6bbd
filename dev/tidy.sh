#!/usr/bin/env bash
# Runs clang-tidy with the checks of .clang-tidy: dev/tidy.sh [file of src/ or regular expression]...
# Without arguments it checks all of src/, which takes many minutes.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"
cd "$root"

dev/setup.sh test
dev/setup.sh tidy
quietly cmake --preset dev
# The files that Qt's meta-object compiler generates must exist before clang-tidy can read the sources.
quietly cmake --build --preset dev
if [[ $# == 0 ]]; then
    set -- "^$root/src/"
fi
run-clang-tidy -quiet -p build/dev "$@"
