"""The vorlen-monitor command, on a desktop with two outputs."""

import fcntl
import json
import os
import pty
import re
import shutil
import struct
import termios
from contextlib import closing

import pytest

from desktop import BUILD, PROGRAMS, Desktop
from processes import TIMEOUT_S
from running_host import RunningHost

COMMAND = "vorlen-monitor.exe"
RUNTIME = "vorlen_runtime.dll"
MODULE = "libvorlen_monitor.dll"
STAND_INS = BUILD / "tests/tools"

KEYS = [
    "handle",
    "deviceName",
    "friendlyName",
    "monitorId",
    "x",
    "y",
    "width",
    "height",
    "refreshRate",
]
BOTH_OUTPUTS = [(0, 0, 3840, 2160, 60), (3840, 0, 1920, 1080, 60)]


@pytest.fixture(scope="module")
def outputs(tmp_path_factory):
    """A desktop whose outputs no test here changes."""
    with closing(Desktop()) as desktop:
        with closing(RunningHost(desktop, tmp_path_factory.mktemp("host"))):
            yield desktop


@pytest.fixture
def folder(tmp_path):
    """A folder with the command and both libraries, for a test to take apart."""
    for name in (COMMAND, RUNTIME, MODULE):
        shutil.copy(PROGRAMS / name, tmp_path)
    return tmp_path


def put_in(folder, stand_in: str) -> None:
    shutil.copy(STAND_INS / stand_in / MODULE, folder)


def run_to_bytes(desktop: Desktop, program, *arguments: str) -> bytes:
    with desktop.start(program, *arguments, encoding=None) as process:
        stdout, stderr = process.communicate(timeout=TIMEOUT_S)
    assert (process.returncode, stderr) == (0, b"")
    return stdout


def monitors_of(desktop: Desktop) -> list[dict]:
    return json.loads(run_to_bytes(desktop, COMMAND, "monitors", "--json"))


def complaint(returncode: int, stderr: str) -> str:
    """The one line on standard error, without the program's name."""
    assert returncode >= 2
    match = re.fullmatch(r"vorlen-monitor: ([^\n]+)\n", stderr)
    assert match, stderr
    return match[1]


def refusal(desktop: Desktop, program, *arguments: str, code: int) -> str:
    refused = desktop.run(program, *arguments)
    assert refused.stdout == ""
    assert refused.returncode == code
    return complaint(refused.returncode, refused.stderr)


# What it shows.


def test_json_holds_both_outputs(outputs):
    monitors = sorted(monitors_of(outputs), key=lambda monitor: monitor["x"])
    assert [list(monitor) for monitor in monitors] == [KEYS, KEYS]
    assert [tuple(monitor.values())[4:] for monitor in monitors] == BOTH_OUTPUTS
    for text, pattern in {
        "handle": r"0x[0-9a-f]+",
        "deviceName": r"\\\\\.\\DISPLAY[0-9]+",
        "friendlyName": r"Display[0-9]+",
    }.items():
        values = [monitor[text] for monitor in monitors]
        assert all(re.fullmatch(pattern, value) for value in values), values
        assert values[0] != values[1]


def test_the_table_holds_what_json_holds(outputs):
    lines = run_to_bytes(outputs, COMMAND, "monitors").decode().splitlines()
    assert len(lines) == 3
    rows = [re.split(" {2,}", line) for line in lines]
    assert rows[0] == [
        "HANDLE",
        "DEVICE NAME",
        "FRIENDLY NAME",
        "MONITOR ID",
        "X",
        "Y",
        "WIDTH",
        "HEIGHT",
        "HZ",
    ]
    assert rows[1:] == [
        [str(value) or "-" for value in monitor.values()] for monitor in monitors_of(outputs)
    ]


def test_an_output_that_is_off_is_not_listed(desktop, tmp_path):
    with closing(RunningHost(desktop, tmp_path)):
        desktop.xrandr("--output", "DUMMY1", "--off")
        assert [tuple(monitor.values())[4:] for monitor in monitors_of(desktop)] == BOTH_OUTPUTS[:1]


def test_a_desktop_without_monitors_is_a_sentence(outputs, folder):
    put_in(folder, "empty_desktop")
    assert run_to_bytes(outputs, folder / COMMAND, "monitors") == b"The desktop has no monitor.\n"
    assert run_to_bytes(outputs, folder / COMMAND, "monitors", "--json") == b"[]\n"


# Promise (vorlen-monitor): Names and titles cannot drive the terminal that shows them: control
# characters and marks that turn the direction of the text are spelled out.
def test_names_arrive_as_utf8_and_cannot_drive_a_terminal(outputs, folder):
    put_in(folder, "hostile_names")
    device = "red {}[31m, 8-bit {}31m"
    friendly = "unpaired \ufffd|, pair \U0001f600, \u4e2d\u6587"
    identity = 'line{}{}feed, turned {} round, "quoted"'

    table = run_to_bytes(outputs, folder / COMMAND, "monitors").decode()
    assert table.count("\n") == 2
    assert device.format("<U+001B>", "<U+009B>") in table
    assert friendly in table
    assert identity.format("<U+000D>", "<U+000A>", "<U+202E>") in table

    document = run_to_bytes(outputs, folder / COMMAND, "monitors", "--json").decode()
    assert not re.search("[\x00-\x09\x0b-\x1f\x7f-\x9f\u202e]", document)
    monitor = json.loads(document)[0]
    assert monitor["deviceName"] == device.format("\x1b", "\x9b")
    assert monitor["friendlyName"] == friendly
    assert monitor["monitorId"] == identity.format("\r", "\n", "\u202e")


def test_a_console_shows_names_in_any_script(outputs, folder):
    put_in(folder, "hostile_names")
    terminal, console = pty.openpty()
    fcntl.ioctl(console, termios.TIOCSWINSZ, struct.pack("HHHH", 50, 250, 0, 0))
    streams = {"stdin": console, "stdout": console, "stderr": console}
    shown = b""
    with outputs.start(folder / COMMAND, "monitors", **streams) as process:
        os.close(console)
        try:
            while piece := os.read(terminal, 65536):
                shown += piece
        except OSError:  # the last program has closed the terminal
            pass
        os.close(terminal)
        assert process.wait(TIMEOUT_S) == 0
    assert "\u4e2d\u6587" in shown.decode()


def test_help_and_version_are_on_standard_output(outputs):
    text = run_to_bytes(outputs, COMMAND, "monitors", "--help").decode()
    assert "Usage: vorlen-monitor monitors [OPTIONS]" in text
    assert "\r" not in text
    text = run_to_bytes(outputs, COMMAND, "--version").decode()
    versions = re.fullmatch(
        r"vorlen-monitor ([\d.]+)\nlibvorlen_monitor.dll ([\d.]+)\nvorlen_runtime.dll ([\d.]+)\n",
        text,
    )
    assert versions, text
    assert len(set(versions.groups())) == 1


def test_versions_that_differ_are_a_warning(outputs, folder):
    put_in(folder, "empty_desktop")
    shown = outputs.run(folder / COMMAND, "--version")
    assert shown.returncode == 0
    assert "libvorlen_monitor.dll unknown\n" in shown.stdout
    assert shown.stderr == (
        "vorlen-monitor: warning: the versions of program and libraries differ; "
        "use the files of one release\n"
    )


# Command lines that make no sense.


COMMANDS = (
    "the commands are: monitors, windows, status, watch, overview, doctor, record; "
    "see vorlen-monitor --help"
)


@pytest.mark.parametrize(
    "arguments, expected",
    [
        ((), f"no command given; {COMMANDS}"),
        (("monitors", "--jsno"), 'unknown option "--jsno"; see vorlen-monitor monitors --help'),
        (
            ("\u4e2d\n\x1b[31m",),
            f'unknown command "\u4e2d<U+000A><U+001B>[31m"; {COMMANDS}',
        ),
    ],
)
def test_a_wrong_command_line_is_refused_in_one_line(outputs, arguments, expected):
    assert refusal(outputs, COMMAND, *arguments, code=2) == expected


# Libraries that cannot be used.


@pytest.mark.parametrize("name", [RUNTIME, MODULE])
def test_a_missing_library_is_named(outputs, folder, name):
    (folder / name).unlink()
    message = refusal(outputs, folder / COMMAND, "monitors", code=3)
    assert f"\\{name}: there is no such file; " in message
    assert message.endswith("of one release must be in the folder of vorlen-monitor.exe")


@pytest.mark.parametrize("name", [RUNTIME, MODULE])
def test_a_library_of_another_folder_is_not_taken(outputs, folder, name):
    (folder / name).unlink()
    environment = {**outputs.environment, "WINEPATH": str(PROGRAMS)}
    elsewhere = {"cwd": PROGRAMS, "env": environment}
    with outputs.start(folder / COMMAND, "monitors", **elsewhere) as process:
        stdout, stderr = process.communicate(timeout=TIMEOUT_S)
    assert (process.returncode, stdout) == (3, "")
    assert f"\\{name}: there is no such file; " in complaint(process.returncode, stderr)


@pytest.mark.parametrize("name, size", [(RUNTIME, 0), (MODULE, 100), (MODULE, 20000)])
def test_a_damaged_library_is_named(outputs, folder, name, size):
    os.truncate(folder / name, size)
    message = refusal(outputs, folder / COMMAND, "monitors", code=3)
    assert f"\\{name}: it is damaged or not a library for 64-bit Windows; " in message


def test_a_runtime_without_its_exports_is_named(outputs, folder):
    shutil.copy(STAND_INS / "empty_desktop" / MODULE, folder / RUNTIME)
    message = refusal(outputs, folder / COMMAND, "monitors", code=3)
    assert f"\\{RUNTIME} does not export Vorlen_Initialize: it is of another release; " in message


def test_a_module_without_its_exports_is_named(outputs, folder):
    shutil.copy(folder / RUNTIME, folder / MODULE)
    message = refusal(outputs, folder / COMMAND, "monitors", code=3)
    assert f"\\{MODULE} does not export getMonitorList: it is of another release; " in message


def test_a_service_that_does_not_start_is_an_error(outputs, folder):
    put_in(folder, "failing_init")
    failed = outputs.run(folder / COMMAND, "monitors")
    assert (failed.returncode, failed.stdout) == (3, "")
    reason, line = failed.stderr.splitlines(keepends=True)
    assert "this module never comes up" in reason
    assert "Vorlen_Initialize failed" in complaint(failed.returncode, line)


def test_an_exception_of_the_library_is_an_error(outputs, folder):
    put_in(folder, "exhausted_memory")
    message = refusal(outputs, folder / COMMAND, "monitors", code=5)
    assert message == "unexpected error: std::bad_alloc"


# Output that cannot be written.


def complaint_with_output(desktop: Desktop, *arguments: str, **options) -> str:
    with desktop.start(COMMAND, *arguments, **options) as process:
        stderr = process.communicate(timeout=TIMEOUT_S)[1]
    assert process.returncode == 4
    return complaint(process.returncode, stderr)


def test_a_closed_pipe_is_named(outputs):
    reading, writing = os.pipe()
    os.close(reading)
    try:
        message = complaint_with_output(outputs, "monitors", stdout=writing)
    finally:
        os.close(writing)
    assert message.startswith("cannot write to standard output: the program that reads it has")


def test_a_full_device_is_named(outputs):
    with open("/dev/full", "wb") as full:
        message = complaint_with_output(outputs, "monitors", stdout=full)
    assert message.startswith("cannot write to standard output: there is no space left")


def test_a_closed_output_is_named(outputs):
    message = complaint_with_output(
        outputs, "monitors", stdout=None, preexec_fn=lambda: os.close(1)
    )
    assert message.startswith("cannot write to standard output: it is closed; ")
