#!/usr/bin/env bash
# Takes pictures of the main window: in every mode at scales 1 and 2, and in a few modes at the sizes of several screens, at further scales and resolutions.
# dev/pictures.sh <folder> [--against <revision>]
# With a revision, takes the same pictures of that revision, too, and writes <folder>/index.html, which shows those that differ side by
# side. The exit code is then 0 if none differs, 1 if some do, and 2 after an error.
set -Eeuo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"

usage="usage: dev/pictures.sh <folder> [--against <revision>]"
against=
if [[ $# == 3 && $2 == --against ]]; then
    against=$3
    trap 'exit 2' ERR
elif [[ $# != 1 ]]; then
    say "$usage" >&2
    exit 2
fi
# A relative path refers to the caller's working folder.
folder=$(realpath -m "$1")
cd "$root"

# take <source folder> <folder>: builds the pictures of a source folder and takes them.
take() {
    local scale dpi program="$1/build/run/src/cuedrill-pictures"
    (
        cd "$1"
        quietly cmake --preset run
        quietly cmake --build --preset run --target cuedrill-pictures
    )
    # The offscreen platform warns about what it does not support; errors of the program still show.
    export QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="*.warning=false"
    for scale in 1 2; do
        QT_SCALE_FACTOR=$scale "$program" "$2"
    done
    # The toolkit takes a resolution for a scale: together, these are scales from 1.5 to 3.
    # Boxes and dialogs are bounded by the screen.
    export QT_QPA_PLATFORM="offscreen:configfile=$root/tests/program/small_screen.json"
    for scale in 1.5 3; do
        QT_SCALE_FACTOR=$scale "$program" --screens "$2"
    done
    for dpi in 144 192 240; do
        QT_FONT_DPI=$dpi "$program" --screens "$2"
    done
}

need_utf8
dev/setup.sh run
# A course is written for each picture. In memory this takes no time.
if [[ -d /dev/shm && -w /dev/shm ]]; then
    export TMPDIR=/dev/shm
fi
if [[ -z $against ]]; then
    take "$root" "$folder"
    exit
fi

revision=$(git rev-parse --verify --quiet "$against^{commit}") || {
    say "$against: no such revision" >&2
    exit 2
}
tree=$root/build/against/$revision
if [[ ! -d $tree ]]; then
    mkdir -p "$tree.part"
    git archive "$revision" | tar -x -C "$tree.part"
    mv "$tree.part" "$tree"
fi
# The camera is that of now, so that both take the same pictures under the same names.
cmp -s src/pictures.cpp "$tree/src/pictures.cpp" || cp src/pictures.cpp "$tree/src/pictures.cpp"
rm -rf "$folder/before" "$folder/now"
take "$tree" "$folder/before"
take "$root" "$folder/now"
status=0
dev/compare_pictures "$folder" --title "Pictures of now and of $against" || status=$?
exit "$status"
