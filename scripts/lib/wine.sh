# A Wine prefix for one desktop.
#
# Each desktop has a prefix of its own, and with it a Wine server of its own: a server stays with
# the display that it was started on. Making a prefix takes several seconds and 700 MB, so that it
# is done once: later prefixes are copies of that template by hard links, made in 0.1 s and thrown
# away after use.
#
# The folder holds:
#   lock        held (descriptor 8) while a prefix is made
#   prefix.*    one per desktop, locked (descriptor 9) while its desktop lives; one that is not
#               locked was left by a script that was killed
#   template-*  named after the version of Wine that made it
# shellcheck shell=bash

wine_folder=$project/build/wine/user-$EUID # Wine refuses a prefix of another user
prefix=

# Makes a prefix and exports what Wine programs need.
open_wine_prefix() {
    local template
    template=$wine_folder/template-$(dpkg-query --show --showformat '${Version}' wine)
    set_wine_environment
    mkdir -p "$wine_folder"
    exec 8>"$wine_folder/lock"
    lock 8 "preparation of Wine"
    remove_abandoned_prefixes
    prefix=$(mktemp -d "$wine_folder/prefix.XXXXXX")
    exec 9<"$prefix"
    flock 9
    export WINEPREFIX=$prefix
    if [[ -d $template ]]; then
        copy_prefix "$template" "$prefix"
    else
        make_first_prefix "$template"
    fi
    exec 8>&-
    start_wine
}

# WINEDEBUG also silences the hint that 32-bit Wine is missing. Without winemenubuilder, Wine
# writes no menus into the home folder of the user. Wine finds files with names beyond ASCII, be it
# the path of this tree, only in a locale with UTF-8, which the user's may not be.
set_wine_environment() {
    [[ $(locale charmap 2>/dev/null) == UTF-8 ]] || export LC_ALL=C.UTF-8
    unset WINEARCH WINELOADER WINESERVER WINEDLLPATH
    export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
}

# Wine's own processes start with the first program, and would write to its standard error, as they
# do now and then although nothing is wrong. Hence that program is one whose output nobody sees: it
# needs the desktop window, and ends. What it has started stays for as long as programs follow each
# other within 10 s; the limit is for what a killed script leaves.
start_wine() {
    wineserver -p10 >/dev/null 2>&1 9>&-
    setsid --wait wine rundll32 user32.dll,GetDesktopWindow </dev/null >/dev/null 2>&1 9>&- ||
        fail "Wine does not start; this command shows why: WINEPREFIX=\$(mktemp -d) wine cmd /c ver"
}

make_first_prefix() {
    say "Preparing Wine (once, about 15 s)"
    step env --unset=DISPLAY wine wineboot --init >"$prefix.log" 2>&1 ||
        fail "Wine could not make its prefix: see $prefix.log"
    end_wine_server
    rm -rf "$wine_folder"/template-* "$prefix.log"
    mkdir "$1.partial"
    copy_prefix "$prefix" "$1.partial"
    mv "$1.partial" "$1"
}

# copy_prefix FROM TO: the registry is copied, since Wine rewrites it; the files are shared.
copy_prefix() {
    cp --archive --link "$1/drive_c" "$2/"
    cp --archive "$1"/*.reg "$1/dosdevices" "$1/.update-timestamp" "$2/"
}

remove_abandoned_prefixes() {
    local abandoned
    for abandoned in "$wine_folder"/prefix.*/; do
        if [[ -d $abandoned ]] && flock --nonblock "$abandoned" true; then
            WINEPREFIX=$abandoned end_wine_server
            rm -rf "$abandoned"
        fi
    done
}

# Ends the server of WINEPREFIX, and with it every Wine process of the prefix, if it runs at all.
# The server has a temporary folder, whose name it writes into the prefix, and which it leaves
# behind.
end_wine_server() {
    local folder=""
    wineserver -k || true
    wineserver -w || true
    [[ ! -f $WINEPREFIX/wineserver ]] || folder=$(<"$WINEPREFIX/wineserver")
    [[ $folder != wine-?????? ]] || rm -rf "${TMPDIR:-/tmp}/$folder"
}

close_wine_prefix() {
    [[ -n $prefix ]] || return 0
    WINEPREFIX=$prefix end_wine_server
    # A Wine process that is just ending may still write there; the next script removes the rest.
    rm -rf "$prefix" 2>/dev/null || true
}
