"""vorlen-monitor --replay, compared with the desktop that was recorded."""

import dataclasses
import json
import pathlib
import re
import shutil
import subprocess
from contextlib import closing

import pytest

from desktop import BUILD, PROGRAMS, Desktop
from recordings import read_recording
from running_host import RunningHost
from window_maker import CLASS_NAME, WS_DISABLED, WS_POPUP, WindowMaker

COMMAND = "vorlen-monitor.exe"
REQUESTS = [
    ("monitors",),
    ("monitors", "--json"),
    ("windows",),
    ("windows", "--json"),
    ("status",),
    ("status", "--json"),
    ("status", "--kit-model", "Display2"),
    ("overview",),
    ("overview", "--kit-model", "Display2"),
    ("doctor",),
    ("doctor", "--redact"),
    ("doctor", "--json", "--kit-model", "Display2"),
    ("doctor", "--json", "--redact"),
    ("watch", "--seconds", "1"),
    ("watch", "--seconds", "1", "--json"),
    ("watch", "--seconds", "1", "--events-only"),
    ("--version",),
]
ALL_WINDOWS = ("windows", "--all", "--json")


@dataclasses.dataclass
class Recorded:
    """A recording, and what the recorded desktop answered."""

    desktop: Desktop
    file: pathlib.Path
    live: dict[tuple[str, ...], subprocess.CompletedProcess]

    def replay(self, *arguments: str) -> subprocess.CompletedProcess:
        return self.desktop.run(COMMAND, "--replay", str(self.file), *arguments)


def make_windows(maker: WindowMaker) -> None:
    maker.show(maker.create("capturable é あ 😀"))
    maker.create("hidden")
    maker.show(maker.create("disabled", WS_POPUP | WS_DISABLED))
    maker.show(maker.create(""))


@pytest.fixture(scope="module")
def recorded(tmp_path_factory):
    """The desktop has changed since it was recorded: a window is gone, an output is off, and the
    kit models are others."""
    folder = tmp_path_factory.mktemp("recorded")
    with closing(Desktop()) as desktop, closing(RunningHost(desktop, folder)):
        desktop.environment["VORLEN_KIT_MODELS"] = "Display1"
        file = folder / "a recording.json"
        with closing(WindowMaker(desktop)) as maker:
            make_windows(maker)
            done = desktop.run(COMMAND, "record", str(file))
            assert (done.returncode, done.stderr) == (0, "")
            live = {request: desktop.run(COMMAND, *request) for request in REQUESTS + [ALL_WINDOWS]}
        desktop.xrandr("--output", "DUMMY1", "--off")
        desktop.environment["VORLEN_KIT_MODELS"] = "Display2"
        yield Recorded(desktop, file, live)


@pytest.fixture
def by_hand(tmp_path):
    """A recording of a desktop with nothing on it."""
    file = tmp_path / "by hand.json"
    content = {"format": "vorlen-monitor recording", "version": 1, "origin": "by hand"}
    file.write_text(json.dumps(content))
    return file


def put_in(folder, stand_in: str) -> pathlib.Path:
    """The command with another module."""
    for name in (COMMAND, "vorlen_runtime.dll"):
        shutil.copy(PROGRAMS / name, folder)
    shutil.copy(BUILD / "tests/tools" / stand_in / "libvorlen_monitor.dll", folder)
    return folder / COMMAND


def refusal(desktop: Desktop, program, *arguments: str, code: int) -> str:
    """The one line on standard error, without the program's name."""
    refused = desktop.run(program, *arguments)
    assert (refused.returncode, refused.stdout) == (code, "")
    match = re.fullmatch(r"vorlen-monitor: ([^\n]+)\n", refused.stderr)
    assert match, refused.stderr
    return match[1]


# Promise (vorlen-monitor): On a recording of a desktop, every command answers as it did on the
# desktop itself.
@pytest.mark.parametrize("request_", REQUESTS, ids=" ".join)
def test_a_recording_answers_as_the_desktop_did(recorded, request_):
    live, replayed = recorded.live[request_], recorded.replay(*request_)
    assert live.stdout != ""
    assert (replayed.returncode, replayed.stdout, replayed.stderr) == (
        live.returncode,
        live.stdout,
        live.stderr,
    )


def test_a_recording_shows_all_windows_with_their_reasons(recorded):
    def made_here(windows: list[dict]) -> list[dict]:
        return [window for window in windows if window["className"] == CLASS_NAME]

    replayed = json.loads(recorded.replay(*ALL_WINDOWS).stdout)
    assert {window["reason"] for window in made_here(replayed)} == {
        None,
        "not visible",
        "disabled",
        "no title",
    }
    assert made_here(replayed) == made_here(json.loads(recorded.live[ALL_WINDOWS].stdout))


def test_a_watch_of_a_recording_shows_no_change(recorded):
    lines = recorded.replay("watch", "--seconds", "2", "--json").stdout.splitlines()
    assert [json.loads(line)["event"] for line in lines] == 3 * ["appeared"]


def test_the_versions_are_those_of_the_recording(recorded, by_hand):
    content = json.loads(by_hand.read_text())
    content["process"] = {"moduleVersion": "1.2.3", "runtimeVersion": "4.5.6"}
    by_hand.write_text(json.dumps(content))
    done = recorded.desktop.run(COMMAND, "--replay", str(by_hand), "--version")
    assert (done.returncode, done.stderr) == (0, "")
    assert done.stdout == "by hand\nlibvorlen_monitor.dll 1.2.3\nvorlen_runtime.dll 4.5.6\n"


def test_a_recording_of_a_recording_is_the_same(recorded, tmp_path):
    copy = tmp_path / "copy.json"
    assert recorded.replay("record", str(copy)).returncode == 0
    assert copy.read_bytes() == recorded.file.read_bytes()

    assert recorded.replay("record", str(copy), "--kit-model", "ONE").returncode == 0
    assert read_recording(copy)["process"]["kitModels"] == "Display1;ONE"

    assert recorded.replay("record", str(copy), "--redact").returncode == 0
    assert "capturable" not in copy.read_text()


def test_a_file_that_is_no_recording_is_refused_in_one_line(recorded, tmp_path):
    missing, truncated = tmp_path / "missing.json", tmp_path / "truncated.json"
    truncated.write_bytes(recorded.file.read_bytes()[:1000])
    nested = tmp_path / "nested.json"
    nested.write_text('{"format": ' + "[" * 100_000 + "]" * 100_000 + "}", encoding="utf-8")
    for file in (missing, tmp_path, truncated, nested):
        message = refusal(recorded.desktop, COMMAND, "--replay", str(file), "monitors", code=2)
        assert message.startswith(f'cannot replay "{file}": ')


def test_a_file_that_is_too_large_is_refused(recorded, tmp_path):
    file = tmp_path / "large.json"
    with open(file, "wb") as large:
        large.truncate(256 * 1024 * 1024 + 1)
    message = refusal(recorded.desktop, COMMAND, "--replay", str(file), "monitors", code=2)
    assert message == f'cannot replay "{file}": it is larger than 256 MB: it is not a recording'


def test_help_needs_no_recording(recorded, tmp_path):
    done = recorded.desktop.run(COMMAND, "--replay", str(tmp_path / "missing.json"), "--help")
    assert (done.returncode, done.stderr) == (0, "")
    assert "--replay FILE" in done.stdout


def test_a_module_of_another_release_is_refused_in_one_line(recorded, by_hand, tmp_path):
    program = put_in(tmp_path, "empty_desktop")
    message = refusal(recorded.desktop, program, "--replay", str(by_hand), "monitors", code=3)
    assert message.startswith("cannot replay a recording: ")
    assert " does not import " in message
    assert ": it is of another release; " in message


def test_a_wrong_call_of_the_module_ends_a_replay_in_one_line(recorded, by_hand, tmp_path):
    program = put_in(tmp_path, "wrong_call")
    assert refusal(recorded.desktop, program, "--replay", str(by_hand), "monitors", code=5) == (
        "the replay cannot go on after an error of the library: "
        "GetWindowLongW was called with the index -12"
    )
    assert recorded.desktop.run(program, "monitors").returncode == 0
