# Runs a command so that a signal to the script is passed to the command, and no process of the
# command is left when the script continues.
#
# The command runs in a new session. Ctrl+C on a terminal then reaches only the script, which
# passes it once to the command, and not to other processes of the script, such as an X server:
# they run until the command has ended.
#
# tini cannot replace this. It passes on signals that it receives itself, but here the script
# receives them, and Bash handles a signal only after its command in the foreground has ended. tini
# also leaves the processes that the command started in the background.
# shellcheck shell=bash

# is_running ID: whether this background job still runs. After its end, another process may have its
# id: a script asks before it sends a signal.
is_running() {
    jobs -rp | grep --quiet --line-regexp "$1"
}

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

# The process group exists from the moment the command has its session. Before that the process
# exists, but might ignore the signal.
pass_on() {
    while kill -0 "$command_group" 2>/dev/null; do
        kill "-$1" -- "-$command_group" 2>/dev/null && return 0
        sleep 0.01
    done
}

# supervise COMMAND [ARGS...]: runs the command to its end and returns its exit code.
# Bash starts background commands with Ctrl+C ignored and without standard input: both are
# restored. If the script is killed, the system sends SIGTERM to the command (pdeathsig).
# Descriptors 8 and 9 are locks of the script (see wine.sh): a Wine server that inherited one would
# hold the lock until the server ends.
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
        ((count != signal_count)) && ! lost_track # wait returned for a signal: the command runs on
    do :; done
    end_rest_of_group
    return "$status"
}

# If a process ends at the moment in which a signal makes wait return, bash does not notice its end
# and would wait for ever. The status is then that of the signal.
lost_track() {
    ! kill -0 "$command_group" 2>/dev/null && jobs -rp | grep --quiet --line-regexp "$command_group"
}

# step COMMAND [ARGS...]: supervises one of several commands of the script. After a signal the
# script ends, too, even if the command succeeded.
step() {
    local status=0
    supervise "$@" || status=$?
    [[ -z $received ]] || exit $((128 + $(kill -l "$received")))
    return "$status"
}

# Ends the processes of the command's group that still run.
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

# Whether a process of the group runs. Processes in the states X and Z do not count: they have
# ended, and stay in the group until the system's first process collects them. The name in
# parentheses may contain any character.
group_runs() {
    { cat /proc/[0-9]*/stat 2>/dev/null || true; } | awk -v group="$1" '
        { sub(/.*\) /, "") }
        $3 == group && $1 !~ /[XZ]/ { runs = 1 }
        END { exit !runs }'
}
