# Lists of this project's files.
# shellcheck shell=bash

# Prints the C and C++ files, each ended by a zero byte, relative to the root of the tree.
own_sources() {
    find . \( -name build -o -name '.?*' \) -prune -o \
        -type f \( -name '*.c' -o -name '*.cpp' -o -name '*.h' \) -print0
}

# Prints the shell scripts in the same form: in the root, .ci/, scripts/ and scripts/lib/. Files
# that are only sourced are left out, because their first line names no shell: the linter follows
# the source commands.
own_scripts() {
    grep --files-with-matches --null --directories=skip --extended-regexp '^#!.*bash' \
        -- * .ci/* scripts/* scripts/lib/*
}

# Prints the Python files in the same form: scripts whose first line names Python, and *.py.
own_python() {
    grep --files-with-matches --null --directories=skip --extended-regexp '^#!.*python3' -- scripts/*
    find . \( -name build -o -name '.?*' \) -prune -o -type f -name '*.py' -print0
}
