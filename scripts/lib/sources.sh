# Which files are this project's own.
# shellcheck shell=bash

# Prints the C and C++ files, each ended by a zero byte, relative to the root of the tree.
own_sources() {
    find . \( -name build -o -name '.?*' \) -prune -o \
        -type f \( -name '*.c' -o -name '*.cpp' -o -name '*.h' \) -print0
}

# Prints the shell scripts likewise: those at the root, of continuous integration and in scripts/.
# Those that are only sourced have no first line that names a shell: the linter follows them.
own_scripts() {
    grep --files-with-matches --null --directories=skip --extended-regexp '^#!.*bash' \
        -- * .ci/* scripts/* scripts/lib/*
}

# Prints the Python files likewise: scripts whose first line names Python, and *.py.
own_python() {
    grep --files-with-matches --null --directories=skip --extended-regexp '^#!.*python3' -- scripts/*
    find . \( -name build -o -name '.?*' \) -prune -o -type f -name '*.py' -print0
}
