#!/usr/bin/env bash
# Installs the packages that a purpose needs and this computer lacks: dev/setup.sh run|test|check|fuzz|tidy
# Prints nothing if there is nothing to do. The list is dev/packages.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
list=${CUEDRILL_PACKAGES:-$here/packages}
purposes=(run test check fuzz tidy)

is_purpose() {
    local purpose
    for purpose in "${purposes[@]}"; do
        [[ $purpose != "$1" ]] || return 0
    done
    return 1
}

# wanted <purpose>: the packages of that purpose and of those before it.
wanted() {
    local purpose
    for purpose in "${purposes[@]}"; do
        awk -v purpose="$purpose" '!/^#/ && $2 == purpose { print $1 }' "$list"
        if [[ $purpose == "$1" ]]; then
            return
        fi
    done
}

is_installed() {
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

if [[ $# != 1 ]] || ! is_purpose "$1"; then
    echo "usage: dev/setup.sh run|test|check|fuzz|tidy" >&2
    exit 2
fi

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is no Debian system, so nothing was installed. Where the build fails, install what" >&2
    echo "corresponds to these Debian packages: $(wanted "$1" | paste -sd ' ')" >&2
    exit 0
fi

missing=()
while read -r package; do
    is_installed "$package" || missing+=("$package")
done < <(wanted "$1")
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=()
if [[ $(id -u) != 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "Some packages are missing, and installing them needs root or sudo. As root, run:" >&2
        echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT

# apt <argument>...: runs apt-get without questions, with its output in the log.
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 \
        apt-get -q -y -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 "$@" >>"$log" 2>&1
}

echo "Installing ${missing[*]}"
# A failed update may still leave package lists that are good enough; the installation decides.
apt update || echo "The package lists could not be updated." >&2
if ! apt install --no-install-recommends "${missing[@]}"; then
    cat "$log" >&2
    echo "The packages could not be installed." >&2
    exit 1
fi
