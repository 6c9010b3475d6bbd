#!/usr/bin/env bash
# Makes the Debian package and looks at it: dev/package.sh [build folder]. The default is build/run, which is built first.
# lintian, appstreamcli, desktop-file-validate and man look at it where they are installed. Then it is installed into a
# Debian that has nothing else, where mmdebstrap can make one (as root, from deb.debian.org), or else
# unpacked into an empty folder, and its programs run there: the first start without a user's data, a question, the tool.
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
zcat "$installed/usr/share/man/man1/cuedrill-course.1.gz" | cmp -s - <("$build/src/cuedrill-course-manual") ||
    die "The manual page of cuedrill-course is not the one that the build gives."

# ELF files of the build: read-only tables of functions and a guarded stack, as packages of Debian have them.
for program in "$installed"/usr/bin/*; do
    [[ $(readelf --wide --dynamic "$program") =~ FLAGS_1.*NOW ]] || die "$program does not bind its functions at the start."
    [[ $(readelf --wide --dyn-syms "$program") == *__stack_chk_fail* ]] || die "The stack of $program is not guarded."
done

# in_root <command>...: runs a command in the Debian that clean_root has made. The mount ends with it.
in_root() {
    # shellcheck disable=SC2016 # the inner shell expands these
    unshare --mount bash -c 'mount -t proc proc "$0/proc" && exec chroot "$0" "$@"' "$work/root" \
        env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

# clean_root: makes a Debian in the folder "root" with the package and what it depends on, and nothing else. Fails where
# none can be made; ends the script where the package cannot be installed.
clean_root() {
    if [[ $(id -u) != 0 ]] || ! command -v mmdebstrap >/dev/null; then
        return 1
    fi
    mmdebstrap --quiet --mode=root --variant=apt bookworm "$work/root" http://deb.debian.org/debian >"$work/log" 2>&1 ||
        return 1
    # The robot is not in the package; what it is linked with is.
    cp "$package" "$build/src/libcuedrill-robot.so" "$work/root/"
    cp /etc/resolv.conf "$work/root/etc/"
    in_root apt-get update >"$work/log" 2>&1 || return 1
    local install=(apt-get --option Dpkg::Options::=--force-unsafe-io install --yes --no-install-recommends "/$(basename "$package")")
    quietly in_root "${install[@]}" --simulate || die "The package asks for what is not there."
    in_root "${install[@]}" --download-only >"$work/log" 2>&1 || return 1
    quietly in_root "${install[@]}" || die "The package cannot be installed."
}

# A home of its own: neither the settings nor the courses of the user take part.
if clean_root; then
    where="a Debian with nothing else"
    enter=(in_root)
    prefix=/usr home=/home/user robot=/libcuedrill-robot.so outside=$work/root
else
    say "No Debian could be made for it, so the package is only unpacked."
    where="an empty folder"
    enter=(env)
    prefix=$installed/usr home=$work/home robot=$build/src/libcuedrill-robot.so outside=
fi
mkdir -p "$outside$home/config" "$outside$home/data"
mkdir -m 700 "$outside$home/runtime"


# run <command>...: runs a command with that home where the package is.
run() {
    "${enter[@]}" env HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" \
        XDG_RUNTIME_DIR="$home/runtime" "$@"
}

quietly run "$prefix/bin/cuedrill-course" --help
version=$(dpkg-deb -f "$package" Version)
[[ $(run "$prefix/bin/cuedrill" --version) == *" version $version "* ]] ||
    die "The program tells another version than its package."

# The first start: the sample course is there, and its first question is drilled. The unseen platform warns of what it
# cannot do; errors of the program still show.
sample="$home/data/cuedrill/Chemical elements.crs"
drilled=$work/drilled
if ! run QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="*.warning=false" LD_PRELOAD="$robot" \
    CUEDRILL_ROBOT_COURSE="$sample" timeout 120 "$prefix/bin/cuedrill" >"$drilled" 2>&1 ||
    ! grep -q '^verdict: known$' "$drilled"; then
    cat "$drilled" >&2
    die "The installed program could not drill its sample course."
fi
grep -q '^box: ' "$drilled" && die "The first start has shown a box: $(grep '^box: ' "$drilled")"
quietly run "$prefix/bin/cuedrill-course" check "$sample"
run "$prefix/bin/cuedrill-course" history "$sample" | grep -q 'known' ||
    die "The verdict is not in the history of the sample course."
say "$(basename "$package") is good; the program in it drilled a question in $where."
