# A desktop: a display and a Wine prefix for it.
# shellcheck shell=bash

source "$project/scripts/lib/virtual_display.sh"
source "$project/scripts/lib/wine.sh"

# open_desktop own|virtual: opens the display in DISPLAY, or, for virtual or without DISPLAY,
# starts a virtual one. Makes a Wine prefix.
open_desktop() {
    if [[ $1 == virtual || -z ${DISPLAY:-} ]]; then
        start_virtual_display
    else
        xset q >/dev/null 2>&1 ||
            fail "cannot open the display DISPLAY=$DISPLAY: name one that runs, or pass --virtual"
    fi
    open_wine_prefix
}

# For the EXIT trap of the script, also after a failure of open_desktop. Further signals must not
# interrupt it.
close_desktop() {
    trap '' HUP INT QUIT TERM
    close_wine_prefix
    stop_virtual_display
}
