"""vorlen-monitor doctor, on a desktop with two outputs."""

import json
from contextlib import closing

import pytest

from desktop import Desktop
from running_host import RunningHost
from window_maker import WS_DISABLED, WS_POPUP, WS_VISIBLE, WindowMaker

COMMAND = "vorlen-monitor.exe"


@pytest.fixture(autouse=True)
def host(desktop, tmp_path):
    with closing(RunningHost(desktop, tmp_path)) as opened:
        yield opened


def diagnosis(desktop: Desktop, *options: str) -> tuple[int, int, dict[str, dict]]:
    """The exit code, the status code, and the findings by their codes."""
    done = desktop.run(COMMAND, "doctor", "--json", *options)
    document = json.loads(done.stdout)
    assert list(document) == ["status", "findings"]
    findings = {finding["code"]: finding for finding in document["findings"]}
    assert len(findings) == len(document["findings"])
    return done.returncode, document["status"]["code"], findings


# Promise (vorlen-monitor): `vorlen-monitor doctor` ends with exit code 0 when no finding prevents a
# 3-D picture, and with 1 otherwise.
def test_a_kit_monitor_that_passes_has_no_error(desktop):
    code, status, findings = diagnosis(desktop, "--kit-model", "Display1")
    assert (code, status) == (0, 16)
    assert "error" not in [finding["severity"] for finding in findings.values()]


def test_a_slow_kit_monitor_is_shown_its_best_mode(desktop):
    desktop.xrandr("--output", "DUMMY0", "--mode", "3840x2160_30")
    code, status, findings = diagnosis(desktop, "--kit-model", "Display1")
    assert (code, status) == (1, 19)
    finding = findings["refresh-rate-too-low"]
    assert finding["severity"] == "error"
    assert "is refreshed at 30 Hz, and at least 59 Hz are required" in finding["seen"]
    assert "is 3840 x 2160 at 60 Hz." in finding["seen"]


def test_a_small_kit_monitor_is_shown_its_size(desktop):
    code, status, findings = diagnosis(desktop, "--kit-model", "Display2")
    assert (code, status) == (1, 18)
    assert "shows 1920 x 1080 pixels" in findings["resolution-too-low"]["seen"]


def test_without_a_kit_monitor_near_misses_are_shown(desktop):
    code, status, findings = diagnosis(desktop, "--kit-model", "display 1")
    assert (code, status) == (1, 17)
    assert 'Display1", \\\\.\\DISPLAY2 "Display2"' in findings["no-kit-monitor"]["seen"]
    assert findings["kit-name-differs"]["seen"] == (
        '\\\\.\\DISPLAY1 is named "Display1", and the kit model "display 1". They differ in case '
        "and spaces."
    )


def test_a_window_that_is_not_capturable_is_shown_with_the_reason(desktop):
    with closing(WindowMaker(desktop)) as maker:
        maker.create("waiting", WS_POPUP | WS_VISIBLE | WS_DISABLED)
        _, _, findings = diagnosis(desktop, "--kit-model", "Display1")
    assert findings["window-not-capturable"]["seen"] == (
        '1 visible window is not capturable, with the reason "disabled": "waiting".'
    )


def test_redacted_output_has_no_title(desktop):
    with closing(WindowMaker(desktop)) as maker:
        maker.create("Letter to the bank", WS_POPUP | WS_VISIBLE | WS_DISABLED)
        plain = desktop.run(COMMAND, "doctor").stdout
        redacted = desktop.run(COMMAND, "doctor", "--redact").stdout
    assert "Letter" in plain
    assert "Letter" not in redacted
    assert 'the reason "disabled": "title ' in redacted


def test_the_text_shows_the_status_and_numbered_findings(desktop):
    done = desktop.run(COMMAND, "doctor", "--kit-model", "Display2")
    assert (done.returncode, done.stderr) == (1, "critical The monitor resolution is incorrect.\n")
    status, first, *_ = done.stdout.split("\n\n")
    assert status == "18 MONITOR_RESOLUTION_INCORRECT: The monitor resolution is incorrect."
    lines = first.splitlines()
    assert lines[0] == "1. error resolution-too-low"
    assert lines[1].startswith("   Seen:    The kit monitor \\\\.\\DISPLAY2")
    assert max(map(len, done.stdout.splitlines())) <= 100


def test_an_invalid_model_name_is_refused(desktop):
    refused = desktop.run(COMMAND, "doctor", "--kit-model", "ONE;TWO")
    assert (refused.returncode, refused.stdout) == (2, "")
