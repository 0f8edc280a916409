"""The viewer, on a desktop with two outputs and on recordings."""

import json
import os
import resource
import shutil
import subprocess
from contextlib import closing

import pytest

from desktop import BUILD, PROGRAMS, PROJECT, Desktop
from processes import finish, wait_until
from recordings import read_recording
from viewer import (
    PROGRAM,
    VK_DOWN,
    VK_HOME,
    VK_LEFT,
    VK_RETURN,
    VK_RIGHT,
    VK_SPACE,
    VK_TAB,
    Driver,
    Viewer,
)
from window_maker import CLASS_NAME, WS_DISABLED, WS_POPUP, WS_VISIBLE, WindowMaker

COMMAND = "vorlen-monitor.exe"
RUNTIME = "vorlen_runtime.dll"
MODULE = "libvorlen_monitor.dll"
RECORDINGS = PROJECT / "tests/recordings"
SLOW_KIT_MONITOR = str(RECORDINGS / "kit_at_30_hz.json")
PORTRAIT = str(RECORDINGS / "portrait_and_negative_coordinates.json")
IN_TAB_ORDER = [
    "mapControl",
    "detailsControl",
    "monitorBox",
    "windowBox",
    "statusControl",
    "checkButton",
    "logControl",
    "filterControl",
    "orderBox",
    "windowList",
    "redactBox",
    "copyButton",
    "saveButton",
]


@pytest.fixture
def desktop():
    """A desktop of the test's own: the windows of an earlier viewer could still change the focus."""
    with closing(Desktop()) as opened:
        yield opened


@pytest.fixture
def maker(desktop):
    with closing(WindowMaker(desktop)) as opened:
        yield opened


@pytest.fixture
def open_viewer(desktop):
    """Opens viewers, which the test need not close."""
    opened = []

    def open_with(*arguments, **options):
        opened.append(Viewer(desktop, *arguments, **options))
        return opened[-1]

    yield open_with
    for viewer in opened:
        viewer.close()


@pytest.fixture
def folder(tmp_path):
    """A folder with the viewer and both libraries, for a test to take apart."""
    for name in (PROGRAM, RUNTIME, MODULE):
        shutil.copy(PROGRAMS / name, tmp_path)
    return tmp_path


def text_of(desktop, *arguments) -> str:
    """What the command prints."""
    return desktop.run(COMMAND, *arguments).stdout


def json_of(desktop, *arguments) -> list[dict]:
    return json.loads(text_of(desktop, *arguments, "--json"))


# What it is.


def test_it_asks_for_the_dpi_of_each_monitor_in_version_2():
    assert b">PerMonitorV2, PerMonitor</dpiAwareness>" in (PROGRAMS / PROGRAM).read_bytes()


# What it shows.


def test_the_monitor_box_equals_the_list_of_monitors(desktop, maker, open_viewer):
    names = [monitor["deviceName"] for monitor in json_of(desktop, "monitors")]
    assert open_viewer().entries("monitorBox") == names


def test_the_window_box_follows_windows_in_their_order(maker, open_viewer):
    def create(title):
        window = maker.create(title)
        maker.show(window)
        return window

    def shown():
        return [title for title in viewer.entries("windowBox") if title.startswith("test ")]

    first = create("test 1")
    viewer = open_viewer()
    assert shown() == ["test 1"]
    create("test 2")
    create("test 3")
    wait_until(lambda: shown() == ["test 1", "test 2", "test 3"], "the windows appear")
    maker.destroy(first)
    wait_until(lambda: shown() == ["test 2", "test 3"], "the window disappears")


def test_windows_that_are_not_capturable_have_their_reason(maker, open_viewer):
    viewer = open_viewer()
    window = maker.create("test", WS_POPUP | WS_VISIBLE | WS_DISABLED)
    row = ["test", CLASS_NAME, "disabled", hex(window)]
    wait_until(lambda: row in viewer.rows(), "the window appears")
    maker.destroy(window)
    wait_until(lambda: row not in viewer.rows(), "the window disappears")


def test_a_kit_monitor_is_marked_and_checked(open_viewer):
    viewer = open_viewer("--kit-model", "Display1")
    assert viewer.map().startswith("2 monitors. Selected: \\\\.\\DISPLAY1, Display1, ")
    assert "Kit monitor, Current monitor" in viewer.map()
    assert viewer.text("statusControl") == "16 MONITOR_OK: OK.\n"
    assert "info The monitor exists.\n" in viewer.text("logControl")


def test_without_a_kit_monitor_it_says_what_to_do(open_viewer):
    viewer = open_viewer()
    assert viewer.text("statusControl").startswith("17 MONITOR_NOT_CONNECTED: ")
    assert "Please connect a Vorlen monitor for 3D viewing.\n" in viewer.text("statusControl")
    assert "error no-kit-monitor\n" in viewer.text("detailsControl")


# Promise (vorlen-monitor-viewer): The viewer follows monitors and windows. A selected monitor stays
# selected while others come and go.
def test_an_output_that_is_turned_off_leaves_the_map(desktop, maker, open_viewer):
    viewer = open_viewer()
    assert viewer.map().startswith("2 monitors.")
    desktop.xrandr("--output", "DUMMY1", "--off")
    wait_until(lambda: viewer.map().startswith("1 monitor."), "it leaves the map")
    assert len(viewer.entries("monitorBox")) == 1


def test_the_selected_monitor_stays_selected_when_another_one_goes(desktop, maker, open_viewer):
    viewer = open_viewer("--kit-model", "Display2")
    viewer.driver.ask("choose", "monitorBox", 0)
    wait_until(lambda: "Selected: \\\\.\\DISPLAY1" in viewer.map(), "it is selected")
    desktop.xrandr("--output", "DUMMY1", "--off")
    wait_until(lambda: viewer.map().startswith("1 monitor."), "the other one leaves the map")
    assert "Selected: \\\\.\\DISPLAY1" in viewer.map()


# The keyboard.


def test_the_tab_key_reaches_every_control(open_viewer):
    viewer = open_viewer("--replay", SLOW_KIT_MONITOR)
    viewer.wait_for_focus("mapControl")
    for control in [*IN_TAB_ORDER[1:], "mapControl"]:
        viewer.driver.ask("key", VK_TAB)
        viewer.wait_for_focus(control)


def test_each_mnemonic_leads_to_its_control(open_viewer):
    viewer = open_viewer("--replay", SLOW_KIT_MONITOR)
    for mnemonic, control in {
        "r": "detailsControl",
        "o": "monitorBox",
        "w": "windowBox",
        "s": "statusControl",
        "g": "logControl",
        "l": "filterControl",
        "b": "orderBox",
        "n": "windowList",
        "m": "mapControl",
    }.items():
        viewer.go_to(mnemonic, control)
    viewer.driver.ask("mnemonic", "y")
    wait_until(lambda: viewer.text("noticeControl") == "The report is copied.", "it is copied")


def test_the_enter_key_presses_the_button_with_the_focus(desktop, open_viewer):
    viewer = open_viewer("--replay", PORTRAIT)
    viewer.go_to("t", "redactBox")  # and ticks it
    viewer.driver.ask("key", VK_TAB)
    viewer.wait_for_focus("copyButton")
    viewer.driver.ask("key", VK_RETURN)
    wait_until(lambda: viewer.text("noticeControl") == "The report is copied.", "it is copied")
    report = viewer.driver.ask("clipboard").replace("\\n", "\n")
    assert report == text_of(desktop, "--replay", PORTRAIT, "doctor", "--redact")


def test_arrow_keys_do_not_leave_the_check_button(open_viewer):
    viewer = open_viewer("--replay", SLOW_KIT_MONITOR)
    viewer.go_to("s", "statusControl")
    viewer.driver.ask("key", VK_TAB)
    viewer.wait_for_focus("checkButton")
    viewer.driver.ask("key", VK_RIGHT)
    viewer.driver.ask("key", VK_TAB)
    viewer.wait_for_focus("logControl")


def test_arrow_keys_select_monitors(open_viewer):
    viewer = open_viewer("--replay", PORTRAIT)
    viewer.go_to("m", "mapControl")
    viewer.driver.ask("key", VK_RIGHT)
    wait_until(lambda: "Selected: \\\\.\\DISPLAY1, Office 24" in viewer.map(), "it is selected")
    assert viewer.text("detailsControl").startswith("Device name: \\\\.\\DISPLAY1\nName: Office 24")
    viewer.driver.ask("key", VK_LEFT)
    wait_until(lambda: "Selected: \\\\.\\DISPLAY2, VL-3D32" in viewer.map(), "it is selected")
    assert "error rotated-picture" in viewer.text("detailsControl")


def test_the_keyboard_selects_in_the_boxes(maker, open_viewer):
    viewer = open_viewer("--replay", PORTRAIT)
    viewer.go_to("o", "monitorBox")
    viewer.driver.ask("key", VK_HOME)
    wait_until(lambda: viewer.driver.ask("selected", "monitorBox") == "0", "it is selected")
    assert "Selected: \\\\.\\DISPLAY1" in viewer.map()


def test_windows_are_filtered_and_sorted_with_the_keyboard(open_viewer):
    viewer = open_viewer("--replay", PORTRAIT)
    assert [row[2] for row in viewer.rows()] == sorted(row[2] for row in viewer.rows())
    viewer.go_to("l", "filterControl")
    viewer.driver.ask("type", "settings")
    wait_until(lambda: [row[0] for row in viewer.rows()] == ["Settings"], "the rest is filtered")
    for _ in "settings":
        viewer.driver.ask("type", "\b")
    wait_until(lambda: len(viewer.rows()) > 5, "everything is listed")
    viewer.go_to("b", "orderBox")
    viewer.driver.ask("key", VK_HOME)
    titles = [row[0].lower() for row in viewer.rows()]
    wait_until(
        lambda: [row[0].lower() for row in viewer.rows()] == sorted(titles), "they are sorted"
    )


def test_a_click_on_a_heading_sorts_and_a_second_one_turns_the_order(open_viewer):
    viewer = open_viewer("--replay", PORTRAIT)
    handles = sorted(int(row[3], 16) for row in viewer.rows())
    for expected in (handles, handles[::-1]):
        viewer.driver.ask("header", 3)
        wait_until(
            lambda: [int(row[3], 16) for row in viewer.rows()] == expected, "they are sorted"
        )


def test_the_selected_window_stays_selected_when_the_order_turns(open_viewer):
    viewer = open_viewer("--replay", PORTRAIT)
    viewer.go_to("n", "windowList")
    viewer.driver.ask("key", VK_DOWN)
    wait_until(lambda: viewer.driver.ask("row") != "-1", "a line is selected")
    selected = viewer.rows()[int(viewer.driver.ask("row"))]
    viewer.driver.ask("choose", "orderBox", 7)
    assert viewer.rows()[int(viewer.driver.ask("row"))] == selected


# Report and recording.


# Promise (vorlen-monitor-viewer): The report that the viewer copies is the text of `vorlen-monitor
# doctor`.
def test_the_copied_report_is_the_doctors(desktop, open_viewer):
    viewer = open_viewer("--replay", PORTRAIT)
    viewer.press("copyButton")
    wait_until(lambda: viewer.text("noticeControl") == "The report is copied.", "it is copied")
    report = viewer.driver.ask("clipboard").replace("\\n", "\n")
    assert report == text_of(desktop, "--replay", PORTRAIT, "doctor")


def test_the_copied_report_is_redacted_on_request(desktop, open_viewer):
    viewer = open_viewer("--replay", PORTRAIT)
    viewer.go_to("n", "windowList")
    viewer.driver.ask("key", VK_TAB)
    viewer.wait_for_focus("redactBox")
    viewer.driver.ask("key", VK_SPACE)
    viewer.press("copyButton")
    wait_until(lambda: viewer.text("noticeControl") == "The report is copied.", "it is copied")
    report = viewer.driver.ask("clipboard").replace("\\n", "\n")
    assert report == text_of(desktop, "--replay", PORTRAIT, "doctor", "--redact")


def save_as(viewer, file):
    viewer.press("saveButton")
    wait_until(lambda: viewer.driver.texts("boxes"), "the dialog opens")
    viewer.driver.ask("confirm", "Z:" + str(file).replace("/", "\\"))


@pytest.mark.parametrize("redact", [False, True])
def test_the_saved_recording_is_the_one_of_the_command(desktop, open_viewer, tmp_path, redact):
    viewer = open_viewer("--replay", PORTRAIT, cwd=tmp_path)
    if redact:
        viewer.press("redactBox")
    saved, expected = tmp_path / "saved.json", tmp_path / "expected.json"
    save_as(viewer, saved)
    wait_until(lambda: viewer.text("noticeControl").startswith("Saved "), "it is saved")
    arguments = ["--redact"] if redact else []
    desktop.run(COMMAND, "--replay", PORTRAIT, "record", str(expected), *arguments)
    assert read_recording(saved) == read_recording(expected)


def test_the_live_desktop_is_saved(maker, open_viewer, tmp_path):
    viewer = open_viewer(cwd=tmp_path)
    window = maker.create("opened later")
    maker.show(window)
    saved = tmp_path / "saved.json"
    save_as(viewer, saved)
    wait_until(lambda: viewer.text("noticeControl").startswith("Saved "), "it is saved")
    titles = [each["title"] for each in read_recording(saved)["windows"]]
    assert "opened later" in titles


def test_a_recording_that_cannot_be_written_is_one_box(open_viewer, tmp_path):
    # A file may have 1,000 bytes. The signal that reports more is ignored, so that writing fails.
    limit = {
        "preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000)),
        "restore_signals": False,
    }
    viewer = open_viewer("--replay", PORTRAIT, cwd=tmp_path, **limit)
    save_as(viewer, tmp_path / "saved.json")
    wait_until(
        lambda: [box for box in viewer.driver.texts("boxes") if "cannot write" in box],
        "the reason is shown",
    )
    wait_until(lambda: viewer.driver.ask("confirm") == "done", "the box is confirmed")
    wait_until(lambda: not viewer.driver.texts("boxes"), "the box closes")
    assert list(tmp_path.iterdir()) == []


def test_it_stays_open_while_a_dialog_waits(open_viewer, tmp_path):
    viewer = open_viewer("--replay", PORTRAIT, cwd=tmp_path)
    viewer.press("saveButton")
    wait_until(lambda: viewer.driver.texts("boxes"), "the dialog opens")
    viewer.driver.ask("closed")
    assert viewer.driver.ask("window") != "0"
    viewer.driver.ask("confirm", "Z:" + str(tmp_path / "saved.json").replace("/", "\\"))
    wait_until(lambda: viewer.text("noticeControl").startswith("Saved "), "it is saved")


# Errors.


def refusal(desktop, program, *arguments) -> tuple[str, int]:
    """The text of the only box, and the exit code."""
    with closing(Driver(desktop)) as driver:
        process = desktop.start(program, *arguments)
        wait_until(lambda: driver.texts("boxes"), "a box opens")
        boxes = driver.texts("boxes")
        assert len(boxes) == 1, boxes
        assert driver.ask("window") == "0"
        driver.ask("confirm")
        return boxes[0], finish(process).returncode


# Promise (vorlen-monitor-viewer): When the viewer cannot start, it shows one message box with the
# reason and ends with a non-zero exit code. With `--picture` the reason is one line on standard error.
def test_a_missing_library_is_one_box(desktop, maker, folder):
    (folder / MODULE).unlink()
    message, code = refusal(desktop, folder / PROGRAM)
    assert code == 3
    assert f"\\{MODULE}: there is no such file; " in message
    assert message.endswith("of one release must be in the folder of vorlen-monitor-viewer.exe")


@pytest.mark.parametrize("name", [RUNTIME, MODULE])
def test_a_broken_library_is_one_box(desktop, maker, folder, name):
    os.truncate(folder / name, 20000)
    message, code = refusal(desktop, folder / PROGRAM)
    assert code == 3
    assert f"\\{name}: it is damaged or not a library for 64-bit Windows; " in message


def test_a_module_of_another_release_is_one_box(desktop, maker, folder):
    shutil.copy(BUILD / "tests/tools/empty_desktop" / MODULE, folder)
    message, code = refusal(desktop, folder / PROGRAM)
    assert code == 3
    assert "it is of another release" in message


def test_a_service_that_does_not_start_is_one_box(desktop, maker, folder):
    shutil.copy(BUILD / "tests/tools/failing_init" / MODULE, folder)
    message, code = refusal(desktop, folder / PROGRAM)
    assert code == 3
    assert message.endswith(
        "Vorlen_Initialize failed; the log says why: "
        "critical the init of a module failed: this module never comes up"
    )


def test_a_wrong_call_of_the_module_is_one_box(desktop, maker, folder):
    shutil.copy(BUILD / "tests/tools/wrong_call" / MODULE, folder)
    message, code = refusal(desktop, folder / PROGRAM, "--replay", PORTRAIT)
    assert code == 5
    assert "the replay cannot go on after an error of the library: " in message


def test_a_bad_recording_is_one_box(desktop, maker, tmp_path):
    file = tmp_path / "bad.json"
    file.write_text("{}", encoding="utf-8")
    message, code = refusal(desktop, PROGRAM, "--replay", str(file))
    assert code == 2
    assert "cannot replay " in message


def test_a_bad_option_is_one_box(desktop, maker):
    message, code = refusal(desktop, PROGRAM, "--reply")
    assert code == 2
    assert 'unknown option "--reply"; see vorlen-monitor-viewer --help' in message


def test_help_is_one_box(desktop, maker):
    message, code = refusal(desktop, PROGRAM, "--help")
    assert code == 0
    assert "--picture" in message


@pytest.mark.parametrize(
    "arguments, code, reason",
    [
        (("--picture", "a.png", "--reply"), 2, "unknown option"),
        (("--picture", "/no/such/folder/a.png", "--replay", PORTRAIT), 4, "cannot write"),
        (("--picture", "a.png", "--replay", "/no/such/file"), 2, "cannot replay"),
    ],
)
def test_a_picture_that_cannot_be_drawn_is_one_line(
    desktop, maker, tmp_path, arguments, code, reason
):
    refused = finish(desktop.start(PROGRAM, *arguments, cwd=tmp_path))
    assert refused.returncode == code
    line = [line for line in refused.stderr.splitlines() if "vorlen-monitor-viewer: " in line]
    assert len(line) == 1 and reason in line[0], refused.stderr
    assert list(tmp_path.iterdir()) == []


def test_a_picture_of_a_desktop_without_monitors_is_drawn(desktop, maker, tmp_path):
    with open(PORTRAIT, encoding="utf-8") as opened:
        recording = json.load(opened)
    recording["monitors"] = []
    recording["displayConfiguration"]["paths"] = []
    file = tmp_path / "empty.json"
    file.write_text(json.dumps(recording), encoding="utf-8")
    drawn = finish(
        desktop.start(PROGRAM, "--replay", str(file), "--picture", "a.png", cwd=tmp_path)
    )
    assert drawn.returncode == 0, drawn.stderr
    assert (tmp_path / "a.png").read_bytes().startswith(b"\x89PNG")


def test_a_part_of_a_picture_does_not_stay(desktop, maker, tmp_path):
    limit = {
        "preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000)),
        "restore_signals": False,
    }
    arguments = ("--picture", "a.png", "--replay", PORTRAIT)
    refused = finish(desktop.start(PROGRAM, *arguments, cwd=tmp_path, **limit))
    assert refused.returncode == 4
    assert 'cannot write "a.png": error 0x' in refused.stderr
    assert list(tmp_path.iterdir()) == []


# Its end.


def test_closing_it_in_a_flood_of_events_cleans_the_service_up(desktop, folder):
    shutil.copy(BUILD / "tests/tools/witnessed_cleanup" / MODULE, folder)
    flood = WindowMaker(desktop)
    try:
        viewer = Viewer(desktop, program=folder / PROGRAM, stderr=subprocess.PIPE)
        flood.start_series(100_000)
        wait_until(
            lambda: any(title.startswith("series ") for title in viewer.entries("windowBox")),
            "the flood arrives",
        )
        viewer.driver.ask("close")
        ended = finish(viewer.process)
        assert not flood.has_answered(), "the flood was over before"
    finally:
        flood.kill()
    viewer.driver.close()
    assert ended.returncode == 0
    assert "the modules are cleaned up\n" in ended.stderr
