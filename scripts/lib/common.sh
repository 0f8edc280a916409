# Shared by every script: how it speaks to whoever runs it. The script has set $project, the root of
# the tree.
# shellcheck shell=bash

# A caller may have closed standard input; programs started from here expect one.
[[ -e /proc/self/fd/0 ]] || exec </dev/null

# Progress, on standard error: standard output belongs to the program that is run.
say() {
    printf '%s\n' "$*" >&2
}

# fail MESSAGE: one line that says what was wrong and what would be right.
fail() {
    say "${0##*/}: $*"
    exit 1
}

# lock DESCRIPTOR WHAT: takes the lock of an open file; speaks only if it has to wait noticeably.
lock() {
    flock --timeout 2 "$1" && return
    say "Waiting until another $2 has finished"
    flock "$1"
}
