# Which files are this project's own.
# shellcheck shell=bash

# Prints the C and C++ files, each ended by a zero byte, relative to the root of the tree.
own_sources() {
    find . \( -name build -o -name '.?*' \) -prune -o \
        -type f \( -name '*.c' -o -name '*.cpp' -o -name '*.h' \) -print0
}

# Prints the shell scripts likewise: those at the root, and what is in scripts/ except data.
own_scripts() {
    grep --files-with-matches --null --recursive --exclude-dir=lib --exclude-dir=build \
        --extended-regexp '^#!.*bash' run check bench .ci scripts
}
