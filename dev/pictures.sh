#!/usr/bin/env bash
# Takes pictures of the main window in every mode, at scale 1 and at scale 2: dev/pictures.sh <folder>
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"

[[ $# == 1 ]] || die "usage: dev/pictures.sh <folder>"
# A relative path refers to the caller's working folder.
folder=$(realpath -m "$1")
cd "$root"

need_utf8
dev/setup.sh run
quietly cmake --preset run
quietly cmake --build --preset run --target cuedrill-pictures
for scale in 1 2; do
    # The offscreen platform warns about what it does not support; errors of the program still show.
    QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$scale QT_LOGGING_RULES="*.warning=false" \
        build/run/src/cuedrill-pictures "$folder"
done
