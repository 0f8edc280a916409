"""vorlen-monitor record, on a desktop with two outputs."""

import json
import os
import resource
from contextlib import closing

import pytest

from desktop import Desktop
from processes import finish
from recordings import read_recording
from running_host import RunningHost
from window_maker import CLASS_NAME, WS_DISABLED, WS_POPUP, WindowMaker

COMMAND = "vorlen-monitor.exe"
TITLE = "Letter to Bob é 😀"


@pytest.fixture(scope="module")
def outputs(tmp_path_factory):
    """A desktop whose outputs no test here changes."""
    with closing(Desktop()) as desktop:
        with closing(RunningHost(desktop, tmp_path_factory.mktemp("host"))):
            yield desktop


@pytest.fixture(scope="module")
def maker(outputs):
    with closing(WindowMaker(outputs)) as opened:
        yield opened


def record(desktop: Desktop, file, *options: str) -> dict:
    done = desktop.run(COMMAND, "record", str(file), *options)
    assert (done.returncode, done.stderr) == (0, "")
    return read_recording(file)


def answer(desktop: Desktop, *arguments: str):
    return json.loads(desktop.run(COMMAND, *arguments).stdout)


def test_a_recording_has_the_monitors_as_listed(outputs, tmp_path):
    recording = record(outputs, tmp_path / "é 😀.json")
    listed = answer(outputs, "monitors", "--json")
    monitors = recording["monitors"]
    assert [each["handle"] for each in monitors] == [each["handle"] for each in listed]
    assert [each["deviceName"] for each in monitors] == [each["deviceName"] for each in listed]
    modes = [each["currentMode"] for each in monitors]
    assert [(mode["x"], mode["mode"]["width"], mode["mode"]["frequency"]) for mode in modes] == [
        (each["x"], each["width"], each["refreshRate"]) for each in listed
    ]
    paths = recording["displayConfiguration"]["paths"]
    names = {
        path["sourceName"]["gdiDeviceName"]: path["targetName"]["friendlyName"] for path in paths
    }
    assert names == {each["deviceName"]: each["friendlyName"] for each in listed}


def test_a_recording_has_the_windows_and_their_reasons(outputs, maker, tmp_path):
    shown = maker.create(TITLE)
    maker.show(shown)
    disabled = maker.create("disabled", WS_POPUP | WS_DISABLED)
    maker.show(disabled)
    windows = {each["handle"]: each for each in record(outputs, tmp_path / "a.json")["windows"]}
    assert windows[hex(shown)]["title"] == TITLE
    assert windows[hex(shown)]["className"] == CLASS_NAME
    assert windows[hex(shown)]["reason"] is None
    assert windows[hex(disabled)]["reason"] == "disabled"
    for listed in answer(outputs, "windows", "--all", "--json"):
        if listed["handle"] in (hex(shown), hex(disabled)):
            assert {key: windows[listed["handle"]][key] for key in listed} == listed


def test_a_recording_says_what_made_it(outputs, tmp_path):
    recording = record(outputs, tmp_path / "a.json", "--kit-model", "ONE", "--kit-model", "TWO")
    process = recording["process"]
    versions = outputs.run(COMMAND, "--version").stdout.split()
    assert recording["origin"] == f"vorlen-monitor {versions[1]}"
    assert process["moduleVersion"] == versions[3]
    assert process["runtimeVersion"] == versions[5]
    assert process["kitModels"] == "ONE;TWO"


# Promise (vorlen-monitor): `vorlen-monitor record FILE --redact` replaces titles, serial numbers, the
# instance part of device paths and the user's name by placeholders.
def test_a_redacted_recording_has_no_original(outputs, maker, tmp_path):
    maker.show(maker.create(TITLE))
    maker.show(maker.create(TITLE))
    plain = record(outputs, tmp_path / "plain.json")
    redacted = record(outputs, tmp_path / "redacted.json", "--redact")
    assert (plain["redacted"], redacted["redacted"]) == (False, True)
    text = (tmp_path / "redacted.json").read_text(encoding="utf-8")
    assert TITLE in (tmp_path / "plain.json").read_text(encoding="utf-8")
    assert TITLE not in text
    assert plain["process"]["userName"] not in ("", redacted["process"]["userName"])
    for path in plain["displayConfiguration"]["paths"]:
        instance = path["targetName"]["devicePath"].split("#")[2]
        assert instance != "" and instance not in text
    titles = [window["title"] for window in redacted["windows"] if window["title"]]
    assert all(title.startswith("title ") for title in titles)
    assert len(set(titles)) < len(titles), "a title that occurs twice has one placeholder"


def test_a_recording_replaces_an_older_file(outputs, tmp_path):
    file = tmp_path / "a.json"
    file.write_text("older")
    record(outputs, file)
    assert os.listdir(tmp_path) == ["a.json"]


def refusal(desktop: Desktop, file) -> str:
    refused = desktop.run(COMMAND, "record", str(file))
    assert (refused.returncode, refused.stdout) == (4, "")
    assert len(refused.stderr.splitlines()) == 1
    return refused.stderr


def test_a_missing_folder_is_named(outputs, tmp_path):
    file = tmp_path / "missing/a.json"
    assert refusal(outputs, file) == (
        f'vorlen-monitor: cannot write "{file}": error 3: Path not found; '
        "name a file in a folder that can be written\n"
    )


def test_a_failure_leaves_an_existing_file_as_it_was(outputs, tmp_path):
    # The file can be written, but its name is too long for the temporary file beside it.
    file = tmp_path / ("a" * 250 + ".json")
    file.write_text("older")
    assert "cannot write" in refusal(outputs, file)
    assert file.read_text() == "older"
    assert os.listdir(tmp_path) == [file.name]


def test_a_full_disk_leaves_an_existing_file_as_it_was(outputs, tmp_path):
    file = tmp_path / "a.json"
    file.write_text("older")
    # A file may have 1,000 bytes. The signal that reports more is ignored, so that writing fails.
    limit = {
        "preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000)),
        "restore_signals": False,
    }
    refused = finish(outputs.start(COMMAND, "record", str(file), **limit))
    assert (refused.returncode, refused.stdout) == (4, "")
    assert refused.stderr.startswith(f'vorlen-monitor: cannot write "{file}": ')
    assert file.read_text() == "older"
    assert os.listdir(tmp_path) == [file.name]


def test_a_folder_is_not_replaced(outputs, tmp_path):
    folder = tmp_path / "folder"
    folder.mkdir()
    assert "cannot write" in refusal(outputs, folder)
    assert os.listdir(tmp_path) == ["folder"]


def test_a_device_is_not_replaced(outputs, tmp_path):
    # A link, so that a mistake would replace the link only.
    device = tmp_path / "device.json"
    device.symlink_to("/dev/null")
    assert "it is a device" in refusal(outputs, device)
    assert device.is_symlink()
    assert os.listdir(tmp_path) == ["device.json"]


def test_output_that_cannot_be_written_keeps_the_recording(outputs, tmp_path):
    file = tmp_path / "a.json"
    with open("/dev/full", "wb") as full:
        with outputs.start(COMMAND, "record", str(file), stdout=full) as process:
            process.communicate()
    assert process.returncode == 4
    assert read_recording(file)["origin"].startswith("vorlen-monitor")
