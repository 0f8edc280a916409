"""vorlen-monitor windows and watch, with windows of another program."""

import json
import os
import re
import select
import signal
from contextlib import closing

import pytest

from desktop import Desktop
from processes import TIMEOUT_S
from running_host import RunningHost
from window_maker import CLASS_NAME, WS_DISABLED, WS_POPUP, WS_VISIBLE, WindowMaker

COMMAND = "vorlen-monitor.exe"


@pytest.fixture
def maker(desktop, tmp_path):
    with closing(RunningHost(desktop, tmp_path)), closing(WindowMaker(desktop)) as opened:
        yield opened


def answer(desktop: Desktop, *arguments: str) -> str:
    done = desktop.run(COMMAND, *arguments)
    assert (done.returncode, done.stderr) == (0, "")
    return done.stdout


def windows_of(desktop: Desktop, *options: str) -> dict[int, dict]:
    listed = json.loads(answer(desktop, "windows", "--json", *options))
    return {int(window["handle"], 16): window for window in listed}


def create_unannounced(maker: WindowMaker, title: str) -> int:
    """A window that is visible from the start: Wine raises no event that says so."""
    return maker.create(title, WS_POPUP | WS_VISIBLE)


class Watch:
    """A running watch, read line by line."""

    def __init__(self, desktop: Desktop, *options: str):
        self.process = desktop.start(COMMAND, "watch", *options, encoding=None)
        self._unread = b""

    def line(self) -> str:
        while b"\n" not in self._unread:
            readable, _, _ = select.select([self.process.stdout], [], [], TIMEOUT_S)
            assert readable, "the watch prints nothing"
            received = os.read(self.process.stdout.fileno(), 65536)
            assert received, "the watch has ended"
            self._unread += received
        line, _, self._unread = self._unread.partition(b"\n")
        return line.decode()

    def until(self, **wanted) -> dict:
        """The first JSON line from here on with these values."""
        while True:
            line = json.loads(self.line())
            if wanted.items() <= line.items():
                return line

    def interrupt(self) -> int:
        self.process.send_signal(signal.SIGINT)
        self.process.communicate(timeout=TIMEOUT_S)
        return self.process.returncode


@pytest.fixture
def watching(desktop):
    started = []

    def start(*options: str) -> Watch:
        started.append(Watch(desktop, *options))
        return started[-1]

    yield start
    for watch in started:
        watch.process.kill()
        watch.process.communicate()


def test_a_shown_window_is_capturable_with_its_texts(desktop, maker):
    window = maker.create("shown é あ 😀")
    maker.show(window)
    assert windows_of(desktop)[window] == {
        "handle": hex(window),
        "title": "shown é あ 😀",
        "className": CLASS_NAME,
    }
    assert re.search(
        rf"^{hex(window)} +{CLASS_NAME} +shown é あ 😀$", answer(desktop, "windows"), re.M
    )


# Promise (vorlen-monitor): `vorlen-monitor windows --all` lists every window, with the reason why
# it is not capturable.
def test_all_shows_why_a_window_is_not_capturable(desktop, maker):
    capturable = maker.create("capturable")
    maker.show(capturable)
    hidden = maker.create("hidden")
    disabled = maker.create("disabled", WS_POPUP | WS_DISABLED)
    maker.show(disabled)
    untitled = maker.create("")
    maker.show(untitled)

    listed = windows_of(desktop, "--all")
    reasons = {
        window: listed[window]["reason"] for window in (capturable, hidden, disabled, untitled)
    }
    assert reasons == {
        capturable: None,
        hidden: "not visible",
        disabled: "disabled",
        untitled: "no title",
    }
    assert set(windows_of(desktop)).isdisjoint({hidden, disabled, untitled})
    table = answer(desktop, "windows", "--all")
    assert re.search(rf"^{hex(capturable)} +yes +{CLASS_NAME} +capturable$", table, re.M)
    assert re.search(rf"^{hex(disabled)} +no: disabled +{CLASS_NAME} +disabled$", table, re.M)


def test_a_desktop_without_windows_to_show_is_a_sentence(desktop):
    assert answer(desktop, "windows") == "No window can be shown on the kit monitor.\n"
    assert answer(desktop, "windows", "--json") == "[]\n"


def test_watch_shows_windows_that_come_and_go(maker, watching):
    watch = watching("--json", "--events-only")
    watch.until(event="appeared", kind="monitor")
    window = maker.create("watched")
    maker.show(window)
    assert watch.until(event="appeared", kind="window") == {
        "event": "appeared",
        "kind": "window",
        "handle": hex(window),
        "title": "watched",
        "className": CLASS_NAME,
        "unreported": False,
    }
    maker.destroy(window)
    watch.until(event="gone", kind="window", handle=hex(window), unreported=False)


# Promise (vorlen-monitor): `vorlen-monitor watch` reads the windows again once a second, and marks
# a change that no event had reported.
def test_watch_marks_windows_that_no_event_has_reported(desktop, maker, watching):
    watch = watching("--json")
    watch.until(event="appeared", kind="monitor")
    with closing(WindowMaker(desktop)) as other:
        window = create_unannounced(other, "silent")
        watch.until(event="appeared", handle=hex(window), title="silent", unreported=True)
    # The other program has ended, and its window with it.
    watch.until(event="gone", handle=hex(window), unreported=True)


def test_watch_goes_by_events_only_when_asked_to(maker, watching):
    reading, trusting = watching("--json"), watching("--json", "--events-only")
    for watch in (reading, trusting):
        watch.until(event="appeared", kind="monitor")
    # Between the two lines of the one watch lies a restart at least, which the other does not make.
    silent = [create_unannounced(maker, "first")]
    reading.until(event="appeared", handle=hex(silent[0]))
    silent.append(create_unannounced(maker, "second"))
    reading.until(event="appeared", handle=hex(silent[1]))
    announced = maker.create("announced")
    maker.show(announced)
    assert trusting.until(event="appeared", kind="window")["handle"] == hex(announced)


def test_watch_shows_an_output_that_is_turned_off(desktop, maker, watching):
    watch = watching("--json")
    watch.until(event="appeared", kind="monitor", x=0)
    second = watch.until(event="appeared", kind="monitor", x=3840)
    desktop.xrandr("--output", "DUMMY1", "--off")
    watch.until(event="gone", kind="monitor", handle=second["handle"])


def test_watch_shows_text_without_json(maker, watching):
    line = watching().line()
    assert re.fullmatch(
        r'appeared monitor 0x\w+ \\\\\.\\DISPLAY\d "Display\d" "" 3840 x 2160 at 0, 0, 60 Hz', line
    ), line


def test_ctrl_c_ends_a_watch_cleanly(maker, watching):
    watch = watching("--json")
    watch.until(event="appeared", kind="monitor")
    assert watch.interrupt() == 0


def test_a_watch_ends_after_the_given_time(desktop, maker):
    lines = answer(desktop, "watch", "--seconds", "1", "--json").splitlines()
    assert [json.loads(line)["event"] for line in lines] == ["appeared", "appeared"]


@pytest.mark.parametrize("seconds", ["0", "1.5"])
def test_an_invalid_time_is_refused_in_one_line(desktop, maker, seconds):
    refused = desktop.run(COMMAND, "watch", "--seconds", seconds)
    assert (refused.returncode, refused.stdout) == (2, "")
    assert re.fullmatch(r"vorlen-monitor: [^\n]*--seconds[^\n]*\n", refused.stderr)
