"""Programs that are linked against the libraries, on a desktop with two outputs."""

import re
from contextlib import closing

import pytest

from desktop import BUILD
from processes import TIMEOUT_S, wait_until
from running_host import RunningHost


@pytest.fixture
def host(desktop, tmp_path):
    """A host that runs on the test's own desktop."""
    with closing(RunningHost(desktop, tmp_path)) as running:
        yield running


def test_a_running_host_sees_an_output_go_and_come_back(desktop, host):
    assert host.number_of_monitors() == 2
    desktop.xrandr("--output", "DUMMY1", "--off")
    wait_until(lambda: host.number_of_monitors() == 1, "the output is off")
    desktop.xrandr("--output", "DUMMY1", "--mode", "1920x1080", "--pos", "3840x0")
    wait_until(lambda: host.number_of_monitors() == 2, "the output is on")


@pytest.mark.usefixtures("host")
def test_the_example_lists_both_outputs(desktop):
    listed = desktop.run(BUILD / "bin/list_desktop.exe")
    assert (listed.returncode, listed.stderr) == (0, "")
    line = re.compile(r"\\\\\.\\DISPLAY\d+ \(Display\d+\): (.*), handle (0x[0-9a-f]+)\n", re.ASCII)
    monitors = line.findall(listed.stdout)
    assert line.sub("", listed.stdout) == ""
    assert sorted(mode for mode, _ in monitors) == [
        "1920x1080 at 3840,0, 60 Hz",
        "3840x2160 at 0,0, 60 Hz",
    ]
    handles = {handle for _, handle in monitors}
    assert len(handles) == 2
    assert "0x0" not in handles


@pytest.mark.usefixtures("host")
def test_the_example_fails_when_its_output_is_lost(desktop):
    with open("/dev/full", "wb") as full:
        with desktop.start(BUILD / "bin/list_desktop.exe", stdout=full) as process:
            errors = process.communicate(timeout=TIMEOUT_S)[1]
    assert process.returncode == 1
    assert errors == "list_desktop: cannot write to standard output; send it elsewhere\n"
