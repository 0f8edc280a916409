# Functions of every script for its messages. The script has set $project, the root of the tree.
# shellcheck shell=bash

# A caller may have closed standard input. Programs started from here need one.
[[ -e /proc/self/fd/0 ]] || exec </dev/null

# say MESSAGE: prints progress to standard error. Standard output is for the program that is run.
say() {
    printf '%s\n' "$*" >&2
}

# fail MESSAGE: ends the script. The message is one line: what was wrong and what would be right.
fail() {
    say "${0##*/}: $*"
    exit 1
}

# lock DESCRIPTOR WHAT: takes the lock of an open file. Prints a line when it has waited for 2 s.
lock() {
    flock --timeout 2 "$1" && return
    say "Waiting until another $2 has finished"
    flock "$1"
}
