"""./run as its user meets it."""

import fcntl
import json
import os
import pathlib
import pty
import re
import shutil
import signal
import subprocess
import termios
from contextlib import closing

import pytest

from desktop import BUILD, PROJECT, RUN
from processes import Marked, complaint_of, finish, run_program, start_program, wait_until
from viewer import PROGRAM, Driver

pytestmark = pytest.mark.usefixtures("prepared")

KIT_MONITOR = str(PROJECT / "tests/recordings/kit_beside_two_others.json")
UHD_AND_HD = [(0, 0, 3840, 2160, 60), (3840, 0, 1920, 1080, 60)]


def start(marked: Marked, *arguments: str, **options) -> subprocess.Popen:
    return start_program(RUN, *arguments, env=marked.environment, **options)


def run(marked: Marked, *arguments: str, **options) -> subprocess.CompletedProcess:
    return finish(start(marked, *arguments, **options))


def layout(shown: subprocess.CompletedProcess) -> list[tuple]:
    """Position, size and refresh rate of each monitor that `monitors --json` has shown."""
    assert shown.returncode == 0, shown.stderr
    keys = ("x", "y", "width", "height", "refreshRate")
    return sorted(tuple(monitor[key] for key in keys) for monitor in json.loads(shown.stdout))


def test_without_arguments_it_shows_a_kit_monitor_that_passes_and_two_windows(marked):
    shown = run(marked)
    assert shown.returncode == 0
    assert "16 MONITOR_OK" in shown.stdout
    windows = shown.stdout.partition("\nWindows\n")[2].splitlines()[1:]
    assert sorted(line.split(maxsplit=2)[1:] for line in windows) == [
        ["Demonstration", "A document"],
        ["Demonstration", "A picture"],
    ]
    assert "./run doctor " in shown.stderr


def test_without_arguments_it_shows_the_desktop_of_the_user_as_it_is(marked, desktop):
    marked.environment["DISPLAY"] = desktop.environment["DISPLAY"]
    shown = run(marked)
    assert (shown.returncode, shown.stderr) == (0, "")
    assert shown.stdout == run(marked, "overview").stdout
    assert "MONITOR_NOT_CONNECTED" in shown.stdout
    assert "Demonstration" not in shown.stdout


def test_standard_error_is_empty_once_everything_is_built(marked):
    assert run(marked, "monitors").stderr == ""


def test_without_a_display_it_makes_one_with_two_outputs(marked):
    assert layout(run(marked, "monitors", "--json")) == UHD_AND_HD


def test_it_shows_the_display_of_the_user(marked, desktop):
    desktop.xrandr("--output", "DUMMY1", "--off")
    marked.environment["DISPLAY"] = desktop.environment["DISPLAY"]
    assert layout(run(marked, "monitors", "--json")) == UHD_AND_HD[:1]


@pytest.mark.parametrize(
    "arguments", [("--virtual", "monitors", "--json"), ("monitors", "--json", "--virtual")]
)
def test_virtual_means_a_virtual_display_wherever_it_stands(marked, desktop, arguments):
    desktop.xrandr("--output", "DUMMY1", "--off")
    marked.environment["DISPLAY"] = desktop.environment["DISPLAY"]
    assert layout(run(marked, *arguments)) == UHD_AND_HD


def test_after_two_dashes_every_argument_is_the_programs(marked):
    refused = run(marked, "monitors", "--", "--virtual")
    assert refused.returncode != 0
    assert "--virtual" in refused.stderr


def test_a_display_that_cannot_be_opened_is_named(marked):
    marked.environment["DISPLAY"] = ":none"
    refused = run(marked, "monitors")
    assert refused.returncode == 1
    assert refused.stderr == (
        "run: cannot open the display DISPLAY=:none: name one that runs, or pass --virtual\n"
    )


def test_it_works_from_any_folder_and_through_a_link(marked, tmp_path):
    link = tmp_path / "link"
    link.symlink_to(RUN)
    assert layout(run(marked, "monitors", "--json", cwd=tmp_path, executable=link)) == UHD_AND_HD


def test_it_works_without_standard_input(marked):
    closed = {"stdin": None, "preexec_fn": lambda: os.close(0)}
    assert layout(run(marked, "monitors", "--json", **closed)) == UHD_AND_HD


def test_the_exit_code_is_the_programs(marked, desktop):
    refused = run(marked, "--no-such-option")
    assert refused.returncode == desktop.run("vorlen-monitor.exe", "--no-such-option").returncode
    assert refused.returncode != 0
    assert refused.stderr != ""


def test_two_at_the_same_time_do_not_disturb_each_other(marked):
    both = [start(marked, "monitors", "--json") for _ in range(2)]
    for process in both:
        shown = finish(process)
        assert layout(shown) == UHD_AND_HD
        assert shown.stderr == ""


def test_it_leaves_no_process_and_no_file_behind(marked, tmp_path):
    marked.environment["TMPDIR"] = str(tmp_path)
    assert run(marked, "monitors").returncode == 0
    assert marked.processes() == {}
    assert list(tmp_path.iterdir()) == []


def test_the_viewer_is_shown_on_the_display_of_the_user(marked, desktop):
    marked.environment["DISPLAY"] = desktop.environment["DISPLAY"]
    process = start(marked, "viewer")
    started = wait_until(lambda: marked.find(f"{BUILD}/bin/{PROGRAM}"), "the viewer starts")
    environment = (pathlib.Path("/proc") / str(started[0]) / "environ").read_text(encoding="utf-8")
    # The driver finds only windows of its own prefix.
    desktop.environment["WINEPREFIX"] = re.search(r"\bWINEPREFIX=([^\0]+)", environment)[1]
    with closing(Driver(desktop)) as driver:
        wait_until(lambda: driver.ask("window") != "0", "its window is shown")
    process.send_signal(signal.SIGTERM)
    assert finish(process).returncode == 128 + signal.SIGTERM
    assert marked.processes() == {}


def test_the_viewer_is_not_shown_on_a_virtual_desktop(marked):
    assert complaint_of(run(marked, "viewer")) == (
        "run: a virtual desktop has no screen to show the viewer on: set DISPLAY, or draw it with "
        "./run viewer --picture FILE.png\n"
    )


def test_wine_is_prepared_while_the_first_build_runs(tmp_path):
    root = tmp_path / "ein Gerät"
    shutil.copytree(PROJECT / "scripts" / "lib", root / "scripts" / "lib")
    shutil.copy(RUN, root)
    os.mkfifo(tmp_path / "started")
    steps = {
        "install": "",
        "build": "read _ <../started\nexit 7\n",
        "prepare-wine": (
            "trap 'echo >../ended; exit 1' TERM\n"
            "echo >../started\n"
            "while :; do sleep 0.01; done\n"
        ),
    }
    for name, text in steps.items():
        step = root / "scripts" / name
        step.write_text(f'#!/bin/sh\ncd "$(dirname "$0")/.."\n{text}')
        step.chmod(0o755)
    assert run_program(root / "run", "--virtual").returncode == 7
    assert (tmp_path / "ended").exists()


@pytest.mark.parametrize("arguments", [(), ("--replay", KIT_MONITOR)])
def test_a_picture_of_the_viewer_is_drawn_on_a_virtual_desktop(marked, tmp_path, arguments):
    picture = tmp_path / "viewer.png"
    drawn = run(marked, "viewer", *arguments, "--picture", str(picture))
    assert (drawn.returncode, drawn.stdout) == (0, ""), drawn.stderr
    assert picture.read_bytes().startswith(b"\x89PNG")
    assert marked.processes() == {}


INTERRUPTIONS = pytest.mark.parametrize(
    "number", [signal.SIGHUP, signal.SIGINT, signal.SIGQUIT, signal.SIGTERM], ids=lambda n: n.name
)


@INTERRUPTIONS
def test_a_signal_while_the_desktop_starts_leaves_no_process(marked, number):
    process = start(marked, "monitors")
    wait_until(lambda: marked.find("Xorg"), "the X server starts")
    process.send_signal(number)
    ended = finish(process)
    assert (ended.returncode, ended.stdout) == (128 + number, "")
    assert marked.processes() == {}


@INTERRUPTIONS
def test_a_signal_while_the_program_starts_leaves_no_process(marked, number):
    process = start(marked, "monitors")
    wait_until(lambda: marked.find("vorlen-monitor.exe monitors"), "the program starts")
    process.send_signal(number)
    assert finish(process).returncode in (128 + number, 0), "0: the program ended by itself"
    assert marked.processes() == {}


@pytest.mark.parametrize(
    "number, code",
    [(signal.SIGINT, 0), (signal.SIGTERM, 128 + signal.SIGTERM)],
    ids=["Ctrl+C ends the program cleanly", "SIGTERM ends it at once"],
)
def test_a_signal_while_it_watches_leaves_no_process(marked, number, code):
    process = start(marked, "watch")
    assert process.stdout.readline().startswith("appeared ")
    process.send_signal(number)
    ended = finish(process)
    assert (ended.returncode, ended.stderr) == (code, "")
    assert marked.processes() == {}


def test_the_keys_ctrl_c_end_it_cleanly(marked):
    terminal, inside = pty.openpty()
    process = start(
        marked,
        "watch",
        stdin=inside,
        stdout=inside,
        start_new_session=True,
        preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0),
    )
    os.close(inside)
    written = os.read(terminal, 4096)
    os.write(terminal, b"\x03")
    written += read_terminal(terminal)
    ended = finish(process)
    assert (ended.returncode, ended.stderr) == (0, "")
    assert b"DISPLAY2" in written
    assert b"\x1b" not in written
    assert marked.processes() == {}


def test_on_a_terminal_it_writes_plain_text(marked):
    shown = run(marked, "monitors")
    terminal, inside = pty.openpty()
    process = start(marked, "monitors", stdout=inside)
    os.close(inside)
    assert read_terminal(terminal).decode("utf-8").replace("\r\n", "\n") == shown.stdout
    assert finish(process).returncode == 0


def read_terminal(terminal: int) -> bytes:
    """Everything that is written to a terminal until the last program has closed it."""
    written = b""
    while True:
        try:
            written += os.read(terminal, 4096)
        except OSError:  # how Linux reports the end
            os.close(terminal)
            return written
