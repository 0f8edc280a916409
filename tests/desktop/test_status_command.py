"""vorlen-monitor status and overview, on a desktop with two outputs."""

import json
from contextlib import closing

import pytest

from desktop import Desktop
from running_host import RunningHost

COMMAND = "vorlen-monitor.exe"
KEYS = ["ok", "code", "name", "shortMessage", "message", "monitor"]


@pytest.fixture(autouse=True)
def host(desktop, tmp_path):
    with closing(RunningHost(desktop, tmp_path)) as opened:
        yield opened


def status(desktop: Desktop, *options: str) -> tuple[int, dict]:
    done = desktop.run(COMMAND, "status", "--json", *options)
    return done.returncode, json.loads(done.stdout)


def test_a_kit_monitor_at_uhd_and_60_hz_passes(desktop):
    code, document = status(desktop, "--kit-model", "Display1")
    assert list(document) == KEYS
    monitor = document.pop("monitor")
    assert (monitor["friendlyName"], monitor["width"], monitor["refreshRate"]) == (
        "Display1",
        3840,
        60,
    )
    assert (code, document) == (
        0,
        {
            "ok": True,
            "code": 16,
            "name": "MONITOR_OK",
            "shortMessage": "OK.",
            "message": "",
        },
    )


# Promise (vorlen-monitor): `vorlen-monitor status` ends with exit code 0 when the check passes, and
# with 1 when it does not.
def test_a_slow_kit_monitor_does_not_pass(desktop):
    assert status(desktop, "--kit-model", "Display1")[0] == 0
    # A running program keeps the rate that it saw first: this one is started after the change.
    desktop.xrandr("--output", "DUMMY0", "--mode", "3840x2160_30")
    code, document = status(desktop, "--kit-model", "Display1")
    assert (code, document["code"], document["ok"]) == (1, 19, False)
    assert document["monitor"]["refreshRate"] == 30


def test_a_small_kit_monitor_does_not_pass(desktop):
    code, document = status(desktop, "--kit-model", "Display2")
    assert (code, document["code"], document["ok"]) == (1, 18, False)
    assert (document["monitor"]["width"], document["monitor"]["height"]) == (1920, 1080)
    assert document["message"].startswith("The resolution of your Vorlen monitor")


@pytest.mark.parametrize("options", [[], ["--kit-model", "Display3"]])
def test_without_a_kit_monitor_no_monitor_is_judged(desktop, options):
    code, document = status(desktop, *options)
    assert (code, document["code"], document["monitor"]) == (1, 17, None)


def test_models_of_options_and_environment_count(desktop):
    assert status(desktop, "--kit-model", "Display3", "--kit-model", "Display1")[0] == 0
    desktop.environment["VORLEN_KIT_MODELS"] = "Display1"
    assert status(desktop)[0] == 0
    assert status(desktop, "--kit-model", "Display3")[0] == 0


def test_the_text_says_code_name_advice_and_monitor(desktop):
    done = desktop.run(COMMAND, "status", "--kit-model", "Display2")
    assert done.stderr == "critical The monitor resolution is incorrect.\n"
    lines = done.stdout.splitlines()
    assert lines[:3] == [
        "18 MONITOR_RESOLUTION_INCORRECT: The monitor resolution is incorrect.",
        "The resolution of your Vorlen monitor is not the recommended specification.",
        "Please set the resolution of your Vorlen monitor to 4K(3840 * 2160) or 8K(7680 * 2160).",
    ]
    assert lines[3].startswith("HANDLE")
    assert "Display2" in lines[4]


@pytest.mark.parametrize("name", ["", "ONE;TWO"])
def test_an_invalid_model_name_is_refused_in_one_line(desktop, name):
    refused = desktop.run(COMMAND, "status", "--kit-model", name)
    assert (refused.returncode, refused.stdout) == (2, "")
    assert refused.stderr == (
        f'vorlen-monitor: "{name}" is not a model name: give --kit-model one name of at least one '
        "character and without ';'\n"
    )


def test_the_overview_shows_monitors_status_and_windows(desktop):
    done = desktop.run(COMMAND, "overview", "--kit-model", "Display1")
    assert (done.returncode, done.stderr) == (0, "")
    sections = [section.splitlines() for section in done.stdout.split("\n\n")]
    assert [section[0] for section in sections] == ["Monitors", "Status", "Windows"]
    assert len(sections[0]) == 4
    assert sections[1][1] == "16 MONITOR_OK: OK."
