# A desktop: a display with a Wine prefix of its own.
# shellcheck shell=bash

source "$project/scripts/lib/virtual_display.sh"
source "$project/scripts/lib/wine.sh"

# open_desktop own|virtual: the user's own display, if there is one, or a virtual one.
open_desktop() {
    if [[ $1 == virtual || -z ${DISPLAY:-} ]]; then
        start_virtual_display
    else
        xset q >/dev/null 2>&1 ||
            fail "cannot open the display DISPLAY=$DISPLAY: name one that runs, or pass --virtual"
    fi
    open_wine_prefix
}

# For the EXIT trap of the script, also where open_desktop failed. Another signal must not cut this
# short.
close_desktop() {
    trap '' HUP INT QUIT TERM
    close_wine_prefix
    stop_virtual_display
}
