"""The viewer, driven as a user does by the test program viewer_driver."""

import re
import subprocess

from desktop import BUILD, PROJECT, Desktop
from processes import TIMEOUT_S, wait_until

PROGRAM = "vorlen-monitor-viewer.exe"
VK_TAB, VK_RETURN, VK_SPACE = 0x09, 0x0D, 0x20
VK_END, VK_HOME, VK_LEFT, VK_RIGHT, VK_DOWN = 0x23, 0x24, 0x25, 0x27, 0x28


def _control_numbers() -> dict[str, int]:
    header = PROJECT / "tools/vorlen-monitor-viewer/control_ids.h"
    text = header.read_text(encoding="utf-8")
    names = re.search(r"enum ControlId : int \{(.*?)\}", text, re.S)[1].split(",")
    first = int(re.search(r"mapLabel = (\d+)", names[0])[1])
    numbers = {}
    for number, name in enumerate((name.split("=")[0].strip() for name in names), first):
        if name:
            numbers[name] = number
    return numbers


CONTROLS = _control_numbers()


class Driver:
    """Answers commands about the viewer of a desktop; see tests/viewer_real/viewer_driver.cpp."""

    def __init__(self, desktop: Desktop):
        self._process = desktop.start(
            BUILD / "tests/viewer_driver.exe", stdin=subprocess.PIPE, stderr=subprocess.DEVNULL
        )

    def ask(self, command: str, *arguments) -> str:
        words = (str(CONTROLS.get(argument, argument)) for argument in arguments)
        self._process.stdin.write(" ".join((command, *words)) + "\n")
        self._process.stdin.flush()
        answer = self._process.stdout.readline()
        assert answer, f"the driver has ended at {command} {arguments}"
        return answer.rstrip("\r\n")

    def texts(self, command: str, *arguments) -> list[str]:
        answer = self.ask(command, *arguments)
        return answer.split("\t") if answer else []

    def close(self) -> None:
        with self._process as process:
            process.stdin.close()
            assert process.wait(TIMEOUT_S) == 0


class Viewer:
    """A running viewer, whose first reading of the desktop is done."""

    def __init__(self, desktop: Desktop, *arguments: str, program=PROGRAM, **options):
        self.driver = Driver(desktop)
        options = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options}
        self.process = desktop.start(program, *arguments, **options)
        wait_until(lambda: self.driver.ask("window") != "0", "the window opens")
        self.wait_for_reading()

    def wait_for_reading(self) -> None:
        wait_until(lambda: self.text("statusControl") != "", "the check is done")
        wait_until(lambda: not self.text("noticeControl").startswith("Reading"), "it is read")

    def text(self, control: str) -> str:
        """With \\n for line breaks."""
        return self.driver.ask("text", control).replace("\\n", "\n")

    def map(self) -> str:
        return self.text("mapControl")

    def entries(self, control: str) -> list[str]:
        return self.driver.texts("entries", control)

    def rows(self) -> list[list[str]]:
        """Title, class, reason and handle of each window that is not capturable."""
        return [row.split("|") for row in self.driver.texts("rows")]

    def focus(self) -> str:
        number = int(self.driver.ask("focus"))
        return next((name for name, each in CONTROLS.items() if each == number), "")

    def wait_for_focus(self, control: str) -> None:
        wait_until(lambda: self.focus() == control, f"{control} has the focus")

    def go_to(self, mnemonic: str, control: str) -> None:
        self.driver.ask("mnemonic", mnemonic)
        self.wait_for_focus(control)

    def press(self, button: str) -> None:
        self.driver.ask("press", button)

    def close(self) -> None:
        if self.process.poll() is None:
            self.driver.ask("close")
        assert self.process.wait(TIMEOUT_S) == 0
        self.driver.close()
