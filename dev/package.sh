#!/usr/bin/env bash
# Makes the Debian package and looks at it: dev/package.sh [build folder]. The default is build/run, which is built first.
# lintian, appstreamcli, desktop-file-validate and man look at it where they are installed. Then the package is unpacked into
# an empty folder, and its programs run there: the first start without a user's data, a question, the tool.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=dev/lib.sh
source "$root/dev/lib.sh"

[[ $# -le 1 ]] || die "usage: dev/package.sh [build folder]"
need_utf8
if ! command -v dpkg-deb >/dev/null || ! command -v dpkg-shlibdeps >/dev/null; then
    say "There are no tools for Debian packages here, so none was made."
    exit 0
fi
if [[ $# == 0 ]]; then
    "$root/dev/setup.sh" run
    cd "$root"
    quietly cmake --preset run
    quietly cmake --build --preset run
fi
build=$(realpath "${1:-$root/build/run}")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

quietly cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/packages"
packages=("$work"/packages/*.deb)
package=${packages[0]}
installed=$work/installed
dpkg-deb -x "$package" "$installed"

# with <program> <command>...: runs the command, whose output counts as complaints only if it fails; says so where the
# program is missing.
with() {
    local program=$1
    shift
    if command -v "$program" >/dev/null; then
        quietly "$@" || die "$program does not accept the package."
    else
        say "$program is missing: not asked."
    fi
}

# no_output <command>...: fails if the command prints anything.
no_output() {
    local printed
    printed=$("$@" 2>&1 >/dev/null) || true
    printf '%s' "$printed"
    [[ -z $printed ]]
}

with lintian lintian --allow-root --fail-on error,warning "$package"
with appstreamcli appstreamcli validate --no-net "$installed"/usr/share/metainfo/*.xml
with desktop-file-validate desktop-file-validate "$installed"/usr/share/applications/*.desktop
for page in "$installed"/usr/share/man/man*/*.gz; do
    with man no_output man --warnings=w -Z -l "$page"
done
tool=$installed/usr/bin/cuedrill-course
zcat "$installed/usr/share/man/man1/cuedrill-course.1.gz" | cmp -s - <("$build/src/cuedrill-course-manual") ||
    die "The manual page of cuedrill-course is not the one that the build gives."

# A home of its own: neither the settings nor the courses of the user take part.
export HOME=$work/home XDG_CONFIG_HOME=$work/home/config XDG_DATA_HOME=$work/home/data XDG_RUNTIME_DIR=$work/home/runtime
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"

quietly "$tool" --help
version=$(dpkg-deb -f "$package" Version)
[[ $("$installed/usr/bin/cuedrill" --version) == *" version $version "* ]] ||
    die "The program tells another version than its package."

# The first start: the sample course is there, and its first question is drilled. The unseen platform warns of what it
# cannot do; errors of the program still show.
sample="$XDG_DATA_HOME/cuedrill/Chemical elements.crs"
drilled=$work/drilled
if ! QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="*.warning=false" LD_PRELOAD=$build/src/libcuedrill-robot.so \
    CUEDRILL_ROBOT_COURSE=$sample timeout 120 "$installed/usr/bin/cuedrill" >"$drilled" 2>&1 ||
    ! grep -q '^verdict: known$' "$drilled"; then
    cat "$drilled" >&2
    die "The installed program could not drill its sample course."
fi
grep -q '^box: ' "$drilled" && die "The first start has shown a box: $(grep '^box: ' "$drilled")"
quietly "$tool" check "$sample"
"$tool" history "$sample" | grep -q 'known' || die "The verdict is not in the history of the sample course."
say "$(basename "$package") is good; the program in it drilled a question."
