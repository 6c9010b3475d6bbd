#!/usr/bin/env bash
# Drills a course by ear: starts the program and the screen reader Orca without a display, presses keys, and writes down
# what is said: dev/speech.sh [protocol]. Prints the protocol if no file is named. Exit code 1 if something that a user
# must hear is not said, 77 if Orca or another program is missing.
# CUEDRILL_SPEECH_BUILD names a build folder other than build/run, CUEDRILL_SPEECH_DISPLAY the number of the display that
# is made, which otherwise is the first free one.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"

[[ $# -le 1 ]] || die "usage: dev/speech.sh [protocol]"
# A relative path refers to the caller's working folder.
protocol=${1:+$(realpath -m "$1")}
cd "$root"

# The Debian package of each program that is needed.
for need in orca:orca Xvfb:xvfb openbox:openbox xdotool:xdotool dbus-run-session:dbus-daemon python3:python3; do
    if ! command -v "${need%%:*}" >/dev/null; then
        say "${need%%:*} is missing, so nothing was checked. It is in the Debian package ${need##*:}." >&2
        exit 77
    fi
done

need_utf8
build=${CUEDRILL_SPEECH_BUILD:-build/run}
if [[ -z ${CUEDRILL_SPEECH_BUILD:-} ]]; then
    dev/setup.sh run
    quietly cmake --preset run
fi
quietly cmake --build "$build" --target cuedrill cuedrill-course

# A session bus of its own: the screen reader must not speak for a user's session, nor listen to it.
log=$(mktemp)
trap 'rm -f "$log"' EXIT
dbus-run-session -- python3 dev/speech_drill.py "$build/src" "${protocol:-/dev/stdout}" 2>"$log" || {
    status=$?
    cat "$log" >&2
    exit "$status"
}
