#!/usr/bin/env bash
# Starts the program on Wayland, under a compositor without a screen, drills a question, and looks at what it has left:
# dev/wayland.sh [build folder]. The default is build/run, which is built first.
# Where the compositor (Debian package weston) is missing or does not start, a message says so, and the exit code is 0.
# The clipboard needs a keyboard, which the compositor has only on an X server; it is tried where Xvfb is installed.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"

[[ $# -le 1 ]] || die "usage: dev/wayland.sh [build folder]"
if ! command -v weston >/dev/null; then
    say "There is no weston here, so the program was not started on Wayland."
    exit 0
fi
need_utf8
if [[ $# == 0 ]]; then
    "$root/dev/setup.sh" run
    cd "$root"
    quietly cmake --preset run
    quietly cmake --build --preset run --target cuedrill cuedrill-course cuedrill-robot
fi
build=$(realpath "${1:-$root/build/run}")

# A home of its own: neither the settings nor the courses of the user take part.
home=$(mktemp -d)
servers=()
end() {
    local server
    for server in "${servers[@]}"; do
        kill "$server" 2>/dev/null || true
        wait "$server" 2>/dev/null || true
    done
    rm -rf "$home"
}
trap end EXIT
export XDG_RUNTIME_DIR=$home/runtime XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data
mkdir -m 700 "$XDG_RUNTIME_DIR" "$home/config" "$home/data"

# wait_for <test> <file>: waits until the server that was started last has made the file; ends the script if it ends first.
wait_for() {
    for _ in {1..300}; do
        ! test "$1" "$2" || return 0
        kill -0 "${servers[0]}" 2>/dev/null || break
        sleep 0.1
    done
    cat "$home"/*.log >&2
    say "No compositor starts here, so the program was not started on Wayland."
    exit 0
}

backend=headless-backend.so
if command -v Xvfb >/dev/null; then
    backend=x11-backend.so
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$home/display" >"$home/xvfb.log" 2>&1 &
    servers=($!)
    wait_for -s "$home/display"
    DISPLAY=:$(cat "$home/display")
    export DISPLAY CUEDRILL_ROBOT_COPIES=1
fi
weston --backend="$backend" --socket=cuedrill-test --idle-time=0 >"$home/weston.log" 2>&1 &
servers=($! "${servers[@]}")
wait_for -S "$XDG_RUNTIME_DIR/cuedrill-test"

course=$home/course.crs
quietly "$build/src/cuedrill-course" "$course" "$root/samples/chemical-elements.txt"

# drill: a question in the program, whose output is kept in the file "printed", and whose errors in "errors".
drill() {
    WAYLAND_DISPLAY=cuedrill-test QT_QPA_PLATFORM=wayland LD_PRELOAD=$build/src/libcuedrill-robot.so \
        timeout 120 "$build/src/cuedrill" "$course" >"$home/printed" 2>"$home/errors"
}

# fault <text>: ends the script with what the program has printed.
fault() {
    cat "$home/printed" "$home/errors" >&2
    die "$1"
}

for session in first second; do
    drill || fault "The $session session on Wayland has failed."
    # The libraries of the graphics driver warn of hardware that is not there.
    ! grep -qvE '^(libEGL|MESA)' "$home/errors" || fault "The $session session on Wayland has reported errors."
    grep -q '^platform: wayland' "$home/printed" || fault "The program did not run on Wayland."
    grep -q '^verdict: known$' "$home/printed" || fault "No question was drilled."
done
if [[ -n ${CUEDRILL_ROBOT_COPIES:-} ]]; then
    answer=$(sed -n 's/^answer: //p' "$home/printed")
    [[ -n $answer && $(sed -n 's/^clipboard: //p' "$home/printed") == "$answer" ]] || fault "The clipboard has another text."
fi
# A position of the window on Wayland is none, so none may be kept for a session on X11.
grep -q '^geometry_without_position=' "$XDG_CONFIG_HOME/CUEDRILL/window.ini" || fault "No size of the window was kept."
! grep -q '^geometry=' "$XDG_CONFIG_HOME/CUEDRILL/window.ini" || fault "A position of the window was kept."
say "On Wayland, two questions were drilled."
