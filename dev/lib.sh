# Shared by the scripts at the root and in dev/; to be sourced.
# shellcheck shell=bash

# say <text>...: prints a line for the user.
say() {
    printf '%s\n' "$*"
}

# die <text>...: ends the script with a message on the error output.
die() {
    printf '%s\n' "$*" >&2
    exit 1
}

# quietly <command>...: runs a command and shows all of its output only when it fails.
quietly() {
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 || status=$?
    if [[ $status != 0 ]]; then
        cat "$log" >&2
        printf 'This failed: %s\n' "$*" >&2
    fi
    rm -f "$log"
    return "$status"
}

# need_utf8: sets a UTF-8 locale, which Qt requires, if none is set, as on a bare machine.
need_utf8() {
    if [[ -z ${LC_ALL:-}${LC_CTYPE:-}${LANG:-} ]]; then
        export LANG=C.UTF-8
    fi
}

# cpp_sources: the names of all C++ files below the working folder, each ended by a NUL byte.
cpp_sources() {
    local folder
    for folder in src tests bench; do
        if [[ -d $folder ]]; then
            find "$folder" \( -name '*.h' -o -name '*.cpp' \) -print0
        fi
    done
}
