# Runs a command so that a signal to the script reaches the command, and so that nothing of the
# command is left when the script goes on.
#
# The command gets a session of its own. A terminal's Ctrl+C then reaches the script alone, which
# passes it on once, and only to the command: what the script has started beside it (an X server)
# lives on until the command has ended.
# shellcheck shell=bash

command_group= # process group of the running command; "starting" until it is known
received=      # the last signal that came while a command ran
signal_count=0

for signal in HUP INT QUIT TERM; do
    # shellcheck disable=SC2064  # the name is wanted as it is now
    trap "on_signal $signal" "$signal"
done

on_signal() {
    [[ -n $command_group ]] || exit $((128 + $(kill -l "$1")))
    received=$1
    ((signal_count += 1))
    [[ $command_group == starting ]] || pass_on "$1"
}

# The group exists from the moment the command has its session; the signals' default actions are
# back by then. Until then the process is there, but a signal could be lost on it.
pass_on() {
    while kill -0 "$command_group" 2>/dev/null; do
        kill "-$1" -- "-$command_group" 2>/dev/null && return 0
        sleep 0.01
    done
}

# supervise COMMAND [ARGS...]: runs it to its end and returns its exit code.
# Bash would start it with Ctrl+C ignored and no standard input, because it runs in the background:
# both are given back. It is also told when the script is killed and cannot tell it any more.
# Descriptors 8 and 9 are locks of the script's (see wine.sh): a Wine server that inherited one
# would hold it for as long as it lives.
supervise() {
    local status count
    received=""
    command_group=starting
    env --default-signal=INT,QUIT setpriv --pdeathsig TERM setsid "$@" <&0 8>&- 9>&- &
    command_group=$!
    [[ -z $received ]] || pass_on "$received"
    while
        status=0 count=$signal_count
        wait "$command_group" || status=$?
        ((count != signal_count)) && ! lost_track # wait returned for a signal: the command goes on
    do :; done
    end_rest_of_group
    return "$status"
}

# Bash forgets a process that ends in the very moment in which a signal makes wait return: it would
# wait for it for ever. The status is then that of the signal.
lost_track() {
    ! kill -0 "$command_group" 2>/dev/null && jobs -rp | grep --quiet --line-regexp "$command_group"
}

# step COMMAND [ARGS...]: supervises one of the script's several commands: a signal ends the script
# too, whatever the command made of it.
step() {
    local status=0
    supervise "$@" || status=$?
    [[ -z $received ]] || exit $((128 + $(kill -l "$received")))
    return "$status"
}

# Ends what the command started in its group and did not end itself.
end_rest_of_group() {
    local group=$command_group
    command_group=
    kill -TERM -- "-$group" 2>/dev/null || return 0
    for _ in {1..100}; do
        group_runs "$group" || return 0
        sleep 0.1
    done
    kill -KILL -- "-$group" 2>/dev/null || true
}

# A process that has ended stays in its group until the system's first process collects it, which
# may be much later: those (states X and Z) do not count. The name in parentheses may hold anything.
group_runs() {
    { cat /proc/[0-9]*/stat 2>/dev/null || true; } | awk -v group="$1" '
        { sub(/.*\) /, "") }
        $3 == group && $1 !~ /[XZ]/ { runs = 1 }
        END { exit !runs }'
}
