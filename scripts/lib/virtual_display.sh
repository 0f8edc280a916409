# A virtual display: an X server without hardware, with two outputs.
# shellcheck shell=bash

display_log=    # folder of the server's log while it starts, or empty
display_server= # process id of the X server, or empty

# Starts the server and exports DISPLAY. The server chooses a free display number, so that two
# scripts never use the same one. It ends with this script, even if the script is killed.
start_virtual_display() {
    local number
    display_log=$(mktemp -d "${TMPDIR:-/tmp}/vorlen-monitor.XXXXXX")
    coproc X_SERVER {
        exec setsid setpriv --pdeathsig TERM /usr/lib/xorg/Xorg -displayfd 1 \
            -config "$project/scripts/lib/virtual_display.conf" -logfile "$display_log/xorg.log" \
            -noreset -nolisten tcp 2>"$display_log/errors"
    }
    # shellcheck disable=SC2154  # set by coproc
    display_server=$X_SERVER_PID
    read -r -t 30 number <&"${X_SERVER[0]}" || display_failed "the X server did not start"
    export DISPLAY=:$number
    lay_out_outputs >"$display_log/errors" 2>&1 || display_failed "the outputs could not be set"
    remove_display_log
}

# DUMMY0: 3840x2160 at 60 Hz; tests can switch it to the modes 3840x2160_30 and 1920x1080.
# DUMMY1, to its right: 1920x1080 at 60 Hz. The server notices that DUMMY1 is connected only when a
# client queries the outputs, which Wine does not do: hence the query at the end.
lay_out_outputs() {
    xrandr --newmode 3840x2160_60 533.00 3840 3888 3920 4000 2160 2163 2168 2222 +hsync -vsync &&
        xrandr --newmode 3840x2160_30 262.75 3840 3888 3920 4000 2160 2163 2168 2191 \
            +hsync -vsync &&
        xrandr --addmode DUMMY0 3840x2160_60 --addmode DUMMY0 3840x2160_30 \
            --addmode DUMMY1 1920x1080 &&
        xrandr --fb 5760x2160 --output DUMMY0 --mode 3840x2160_60 --pos 0x0 \
            --output DUMMY1 --mode 1920x1080 --pos 3840x0 &&
        xrandr --query
}

display_failed() {
    tail -n 5 "$display_log/errors" >&2
    fail "no virtual display: $1 (see its last messages above)"
}

stop_virtual_display() {
    if [[ -n $display_server ]]; then
        kill "$display_server" 2>/dev/null || true
        wait "$display_server" || true
        display_server=
    fi
    remove_display_log
}

remove_display_log() {
    [[ -z $display_log ]] || rm -rf "$display_log"
    display_log=
}
