# A Wine prefix for one desktop.
#
# Each desktop has its own prefix and thereby its own Wine server, because a server keeps the
# display on which it was started. Making a prefix takes several seconds and 700 MB. It is done
# once, for a template; the prefixes are copies of the template with hard links, which take 0.1 s
# and are removed after use.
#
# The folder contains:
#   lock        locked (descriptor 8) while a prefix is made
#   prefix.*    one for each desktop, locked (descriptor 9) while the desktop is open; a prefix
#               that is not locked was left by a killed script
#   template-*  named after the version of Wine that made it
# shellcheck shell=bash

wine_folder=$project/build/wine/user-$EUID # Wine refuses a prefix of another user
prefix=

# Makes a prefix, exports the environment of Wine programs, and starts Wine.
open_wine_prefix() {
    make_wine_prefix
    start_wine
}

wine_template() {
    local version
    version=$(dpkg-query --show --showformat '${Version}' wine) || return
    echo "$wine_folder/template-$version"
}

make_wine_prefix() {
    local template
    template=$(wine_template)
    set_wine_environment
    mkdir -p "$wine_folder"
    exec 8>"$wine_folder/lock"
    lock 8 "preparation of Wine"
    remove_abandoned_prefixes
    prefix=$(mktemp -d "$wine_folder/prefix.XXXXXX")
    exec 9<"$prefix"
    flock 9
    echo "${TMPDIR:-/tmp}" >"$prefix/temporary_folder"
    export WINEPREFIX=$prefix
    if [[ -d $template ]]; then
        copy_prefix "$template" "$prefix"
    else
        make_first_prefix "$template"
    fi
    exec 8>&-
}

# WINEDEBUG=-all also suppresses the message that 32-bit Wine is missing. Without winemenubuilder,
# Wine writes no menus into the home folder of the user, and with a cache here, its libraries write
# no list of fonts there. Wine finds files whose paths are not ASCII, such as a path of this tree,
# only in a UTF-8 locale.
set_wine_environment() {
    [[ $(locale charmap 2>/dev/null) == UTF-8 ]] || export LC_ALL=C.UTF-8
    unset WINEARCH WINELOADER WINESERVER WINEDLLPATH
    export XDG_CACHE_HOME=$wine_folder/cache
    export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
}

# Starts Wine's processes with a first program whose output is dropped: they start with the first
# program that needs the desktop window, inherit its standard error, and sometimes write to it
# although nothing is wrong. They run as long as programs follow each other within 10 s; the limit
# ends them after the script was killed. Without winedevice, plugplay and svchost, which serve devices
# and a log that nothing here needs, they start in two thirds of the time.
start_wine() {
    local unused=winedevice.exe,plugplay.exe,svchost.exe
    wineserver -p10 >/dev/null 2>&1 9>&-
    WINEDLLOVERRIDES=$unused,$WINEDLLOVERRIDES setsid --wait \
        wine rundll32 user32.dll,GetDesktopWindow </dev/null >/dev/null 2>&1 9>&- ||
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

# copy_prefix FROM TO: copies the registry, because Wine rewrites it, and links the other files.
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

# Ends the Wine server of WINEPREFIX, if it runs, and with it every Wine process of the prefix. The
# server does not remove its folder in the temporary folder of the script that made the prefix, and
# writes its name into the prefix. If the server has ended, wineserver makes another one.
end_wine_server() {
    local temporary=/tmp name
    [[ ! -f $WINEPREFIX/temporary_folder ]] || temporary=$(<"$WINEPREFIX/temporary_folder")
    for name in $(server_folder; TMPDIR=$temporary stop_wine_server; server_folder); do
        [[ $name != wine-?????? ]] || rm -rf "${temporary:?}/$name"
    done
}

# Option -k waits in growing steps for the server's end, which -w notices at once.
stop_wine_server() {
    local asked
    env --default-signal=TERM wineserver -k & # the script may ignore it
    asked=$!
    wineserver -w || true
    kill "$asked" 2>/dev/null || true
    wait "$asked" || true
}

server_folder() {
    [[ ! -f $WINEPREFIX/wineserver ]] || echo "$(<"$WINEPREFIX/wineserver")"
}

close_wine_prefix() {
    [[ -n $prefix ]] || return 0
    WINEPREFIX=$prefix end_wine_server
    # A Wine process that is ending may still write there. The next script removes the rest.
    rm -rf "$prefix" 2>/dev/null || true
}
