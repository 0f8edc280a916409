#!/usr/bin/env bash
# bare_machine.sh FOLDER both|root|user: the part of scripts/bare-machine that runs as the first process of a new
# mount namespace and a new process namespace. It installs the system in FOLDER/system.
#
# Each user has a clone at a path with a space and a character outside ASCII, and the locale C. A
# command must not leave a process. After the packages are installed, ./check as root, and ./run
# and ./check as the user, must not change a file outside of the clones and of /tmp.
set -euo pipefail

self=$(readlink -f "${BASH_SOURCE[0]}")
project=${self%/scripts/*}
source "$project/scripts/lib/common.sh"

# The first process of a namespace receives only signals that it handles.
for signal in HUP INT QUIT TERM; do
    # shellcheck disable=SC2064  # the name is wanted as it is now
    trap "exit $((128 + $(kill -l "$signal")))" "$signal"
done

folder=$1 who=$2
system=$folder/system
user=tester
clone="space and ü/clone"

home_of() {
    if [[ $1 == root ]]; then echo /root; else echo "/home/$1"; fi
}

# wait_for COMMAND...: runs the command to its end. It runs in the background because a shell
# handles a signal only after its command in the foreground has ended; this way the script ends at
# once, and all processes of the namespace with it.
wait_for() {
    env --default-signal=INT,QUIT "$@" <&0 &
    wait $!
}

# logged COMMAND...: runs the command. Its output is shown only if it fails.
logged() {
    wait_for "$@" >"$folder/log" 2>&1 && return
    tail -n 20 "$folder/log" >&2
    fail "this failed (see its last messages above): $*"
}

# Prints the mirror from which this machine gets Debian 12.
mirror() {
    # shellcheck disable=SC2016  # apt expands them
    apt-get indextargets --format '$(SITE)|$(RELEASE)|$(CODENAME)|$(COMPONENT)' \
        'Created-By: Packages' |
        awk -F '|' '($2 == "bookworm" || $3 == "bookworm") && $4 == "main" { print $1; exit }'
}

make_system() {
    local from proxy=""
    from=$(mirror)
    [[ -n $from ]] || fail "apt on this machine has no mirror of Debian 12 (bookworm): add one"
    eval "$(apt-config shell proxy Acquire::http::Proxy)"
    [[ -z $proxy ]] || export http_proxy=$proxy
    say "Making a bare Debian 12 in $system"
    logged debootstrap --variant=minbase bookworm "$system" "$from"
}

# Gives apt the sources, the keys and the download settings of this machine. Other settings may
# call programs that a bare machine does not have. The certificates that were added to this machine
# are needed a second time: when ca-certificates is installed, it writes the list of all again.
set_up_network() {
    local file
    for file in /etc/hosts /etc/resolv.conf /etc/ssl/certs/ca-certificates.crt \
        /usr/local/share/ca-certificates/*.crt; do
        [[ ! -e $file ]] || install -D --mode 644 "$file" "$system$file"
    done
    cp --archive /etc/apt /usr/share/keyrings "$folder/"
    rm -rf "$folder/apt/apt.conf" "$folder/apt/apt.conf.d"
    cp --archive "$folder/apt/." "$system/etc/apt/"
    cp --archive "$folder/keyrings/." "$system/usr/share/keyrings/"
    apt-config dump | grep '^Acquire::' >"$system/etc/apt/apt.conf.d/downloads"
}

# Makes separate devices, so that no command can damage the devices of this machine.
make_devices() {
    local name number
    mount --types tmpfs --options mode=755 devices "$system/dev"
    while read -r name number; do
        # shellcheck disable=SC2086  # two numbers
        mknod --mode 666 "$system/dev/$name" c $number
    done <<'END'
null 1 3
zero 1 5
full 1 7
random 1 8
urandom 1 9
tty 5 0
END
    ln --symbolic pts/ptmx "$system/dev/ptmx"
    ln --symbolic /proc/self/fd "$system/dev/fd"
    ln --symbolic fd/0 "$system/dev/stdin"
    ln --symbolic fd/1 "$system/dev/stdout"
    ln --symbolic fd/2 "$system/dev/stderr"
    mkdir "$system/dev/pts" "$system/dev/shm"
    mount --types devpts --options ptmxmode=666,mode=620,gid=5 terminals "$system/dev/pts"
    mount --types tmpfs --options mode=1777 memory "$system/dev/shm"
    mount --types proc processes "$system/proc"
}

make_clone() {
    local home
    home=$(home_of "$1")
    mkdir -p "$system$home/${clone%/*}"
    git clone --quiet --no-hardlinks "$project" "$system$home/$clone"
    chroot "$system" chown --recursive "$1:$1" "$home/${clone%/*}"
}

# succeeds USER COMMAND...: runs the command in the user's clone, with the environment of a login.
succeeds() {
    local who=$1 home status=0
    shift
    home=$(home_of "$who")
    say "On the bare machine, as $who: $*"
    # shellcheck disable=SC2016  # expanded there
    wait_for chroot "$system" setpriv --reuid "$who" --regid "$who" --init-groups \
        env --ignore-environment LC_ALL=C HOME="$home" USER="$who" \
        PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        bash -c 'cd "$1" && shift && exec "$@"' bash "$home/$clone" "$@" \
        <"$system/dev/null" || status=$?
    ((status == 0)) || fail "as $who, $* ended with exit code $status on the bare machine"
    no_process_is_left "after $* as $who"
}

# Processes in the states X and Z have ended: they exist until this script, as the first process,
# collects them.
no_process_is_left() {
    local file line left=()
    for file in /proc/[0-9]*/stat; do
        { read -r line <"$file"; } 2>/dev/null || continue
        [[ ${line%% *} == 1 || ${line##*) } == [XZ]* ]] || left+=("${line%%) *})")
    done
    ((${#left[@]} == 0)) || fail "processes were left $1: ${left[*]}"
}

# Prints the files outside of the clones and of /tmp. For folders without time and size, which also
# change when a file is created and removed again.
files() {
    cd "$system"
    find . ./dev ./dev/shm -xdev \( -path ./tmp -o -path './*/space and ü' \) -prune -o \
        \( -type f -printf '%p: %M %U:%G %s %t\n' -o -type l -printf '%p: %l\n' \
        -o -type c -exec stat --format '%n: %F %t:%T %A %u:%g' '{}' + \
        -o -printf '%p: %M %U:%G\n' \) | sort
}

nothing_has_changed() {
    (files) >"$folder/after"
    diff --unified=0 "$folder/before" "$folder/after" >&2 ||
        fail "files outside of the clone have changed $1 (see above)"
}

make_system
set_up_network
make_devices
chroot "$system" useradd --create-home --user-group --shell /bin/bash "$user"
make_clone root
make_clone "$user"

[[ $who == user ]] || succeeds root ./run
succeeds root scripts/install check # as ./check does first
(files) >"$folder/before"
if [[ $who != user ]]; then
    succeeds root ./check
    nothing_has_changed "after ./check as root"
fi
if [[ $who != root ]]; then
    succeeds "$user" ./run
    succeeds "$user" ./check
    nothing_has_changed "after ./run and ./check as $user"
fi
