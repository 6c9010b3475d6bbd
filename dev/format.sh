#!/usr/bin/env bash
# Formats all C++ sources according to .clang-format.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"
cd "$root"

dev/setup.sh check
cpp_sources | xargs -0 --no-run-if-empty clang-format -i
