"""scripts/with-desktop: what a command gets from it, and what it leaves."""

import json
import os
import signal
import subprocess
import sys

import pytest

from desktop import HOLD_OPEN, WITH_DESKTOP
from processes import Marked, TIMEOUT_S, finish, start_program, wait_until

pytestmark = pytest.mark.usefixtures("prepared")


def start(marked: Marked, *command: str) -> subprocess.Popen:
    return start_program(WITH_DESKTOP, *command, env=marked.environment, stdin=subprocess.PIPE)


def run(marked: Marked, *command: str, given: str = "") -> subprocess.CompletedProcess:
    return finish(start(marked, *command), given)


def test_the_exit_code_is_the_commands(marked):
    assert run(marked, "sh", "-c", "exit 7").returncode == 7


def test_a_command_that_does_not_exist_is_named(marked):
    missing = run(marked, "no-such-command")
    assert missing.returncode == 127
    assert "no-such-command" in missing.stderr


def test_without_a_command_it_says_how_to_use_it(marked):
    refused = run(marked, "--virtual")
    assert refused.returncode == 1
    assert refused.stderr == (
        "with-desktop: no command given; usage: "
        "scripts/with-desktop [--virtual] COMMAND [ARGS...]\n"
    )


def test_the_command_reads_standard_input(marked):
    assert run(marked, "cat", given="text\n").stdout == "text\n"


def test_the_display_has_two_outputs_and_a_slow_mode(marked):
    outputs = run(marked, "xrandr").stdout
    assert "DUMMY0 connected primary 3840x2160+0+0" in outputs
    assert "DUMMY1 connected 1920x1080+3840+0" in outputs
    assert "3840x2160_30" in outputs


def test_the_users_display_is_kept(marked, desktop):
    marked.environment["DISPLAY"] = desktop.environment["DISPLAY"]
    assert (
        run(marked, "sh", "-c", 'echo "$DISPLAY"').stdout.strip() == marked.environment["DISPLAY"]
    )


def test_a_desktop_inside_a_desktop_is_another_one(marked, desktop):
    marked.environment.update(desktop.environment)
    inner = run(marked, "--virtual", "sh", "-c", 'echo "$DISPLAY $WINEPREFIX"').stdout.split()
    assert inner[0] != desktop.environment["DISPLAY"]
    assert inner[1] != desktop.environment["WINEPREFIX"]


def test_every_desktop_has_a_prefix_of_its_own(marked):
    write = 'echo text >"$WINEPREFIX/drive_c/left"; cat "$WINEPREFIX/drive_c/left"'
    assert run(marked, "sh", "-c", write).stdout == "text\n"
    assert "left" not in run(marked, "sh", "-c", 'ls "$WINEPREFIX/drive_c"').stdout.split()


def test_settings_of_the_users_own_wine_do_not_matter(marked):
    marked.environment.update(WINEARCH="win32", WINEDEBUG="+all", WINEPREFIX="/nonexistent")
    said = run(marked, "wine", "cmd", "/c", "echo text")
    assert (said.returncode, said.stdout.strip(), said.stderr) == (0, "text", "")


def test_wine_writes_nothing_into_the_users_home_folder(marked, tmp_path):
    # The list of fonts, where the system has none that fits.
    settings, home = tmp_path / "fonts.conf", tmp_path / "home"
    settings.write_text(
        "<fontconfig><dir>/usr/share/fonts</dir>"
        '<cachedir prefix="xdg">fontconfig</cachedir></fontconfig>'
    )
    home.mkdir()
    marked.environment.pop("XDG_CACHE_HOME", None)
    marked.environment.update(FONTCONFIG_FILE=str(settings), HOME=str(home))
    assert run(marked, "wine", "cmd", "/c", "echo text").returncode == 0
    assert list(home.rglob("*")) == []


@pytest.mark.parametrize("locale", ["C", "no_such.UTF-8"])
def test_files_with_names_beyond_ascii_are_found_in_every_locale(marked, tmp_path, locale):
    # With 7 bits of each byte, as Wine reads it in the locale C, ü is C<, which no Windows name has.
    (tmp_path / "für.txt").write_text("text\n")
    marked.environment["LC_ALL"] = locale
    file = f"Z:{tmp_path}/für.txt".replace("/", "\\")
    assert run(marked, "wine", "cmd", "/c", "type", file).stdout == "text\n"


def test_a_locale_of_the_user_with_utf_8_is_kept(marked):
    marked.environment.update(LANG="C.UTF-8", LC_ALL="")
    assert run(marked, "sh", "-c", 'echo "$LANG,$LC_ALL"').stdout == "C.UTF-8,\n"


def test_it_removes_the_prefix_and_every_process(marked):
    command = 'wine cmd /c "echo started"; sleep 1000 & echo "$WINEPREFIX"'
    started, prefix = run(marked, "sh", "-c", command).stdout.splitlines()
    assert started == "started"
    assert not os.path.exists(prefix)
    assert marked.processes() == {}


def test_a_signal_reaches_the_command(marked):
    command = "trap 'echo ending; exit 3' INT; echo started; while :; do sleep 0.02; done"
    process = start(marked, "bash", "-c", command)
    assert process.stdout.readline() == "started\n"
    process.send_signal(signal.SIGINT)
    ended = finish(process)
    assert (ended.returncode, ended.stdout) == (3, "ending\n")
    assert marked.processes() == {}


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM], ids=lambda n: n.name)
def test_a_signal_ends_a_command_that_does_not_handle_it(marked, number):
    process = start(marked, "cat")
    process.stdin.write("started\n")
    process.stdin.flush()
    assert process.stdout.readline() == "started\n"
    process.send_signal(number)
    # Its input stays open: cat would also end with it.
    assert process.wait(TIMEOUT_S) == 128 + number
    process.communicate()
    assert marked.processes() == {}


def test_killed_it_takes_its_processes_along(marked):
    process = start(marked, "sh", "-c", "echo started; exec sleep 1000")
    assert process.stdout.readline() == "started\n"
    process.kill()
    finish(process)
    wait_until(lambda: marked.processes() == {}, "all of its processes have ended")


def test_what_a_killed_one_left_is_removed_by_the_next(marked, tmp_path):
    marked.environment["TMPDIR"] = str(tmp_path)
    process = start(marked, sys.executable, "-c", HOLD_OPEN)
    prefix = json.loads(process.stdout.readline())["WINEPREFIX"]
    # Before the end: afterwards, any script that starts may remove it.
    assert os.path.exists(prefix)
    process.kill()
    finish(process)
    assert run(marked, "true").returncode == 0
    assert not os.path.exists(prefix)
    assert list(tmp_path.iterdir()) == []
    assert marked.processes() == {}


def test_what_a_killed_one_left_is_removed_from_its_temporary_folder(marked, tmp_path):
    first, second = tmp_path / "first", tmp_path / "second"
    first.mkdir()
    second.mkdir()
    marked.environment["TMPDIR"] = str(first)
    process = start(marked, sys.executable, "-c", HOLD_OPEN)
    process.stdout.readline()
    assert list(first.glob("wine-*")) != []
    process.kill()
    finish(process)
    marked.environment["TMPDIR"] = str(second)
    assert run(marked, "true").returncode == 0
    assert list(first.glob("wine-*")) == []
