"""A host that stays while tests look at the desktop."""

import pathlib
import select
import shutil
import subprocess

from desktop import BUILD, PROGRAMS, Desktop
from processes import TIMEOUT_S

FILES = (
    PROGRAMS / "vorlen_runtime.dll",
    PROGRAMS / "libvorlen_monitor.dll",
    BUILD / "tests/tools/monitor_count.exe",
)


class RunningHost:
    """The test program monitor_count, which answers each line with the number of monitors.

    While it runs, Wine stays up, too: other programs start at once, without waiting for Wine's own
    processes and without their messages on standard error, which are dropped here.
    """

    def __init__(self, desktop: Desktop, folder: pathlib.Path):
        for file in FILES:
            shutil.copy(file, folder)
        self._process = desktop.start(
            folder / "monitor_count.exe", stdin=subprocess.PIPE, stderr=subprocess.DEVNULL
        )
        self.number_of_monitors()

    def number_of_monitors(self) -> int:
        self._process.stdin.write("\n")
        self._process.stdin.flush()
        answered, _, _ = select.select([self._process.stdout], [], [], TIMEOUT_S)
        assert answered, "the host does not answer"
        return int(self._process.stdout.readline())

    def close(self) -> None:
        with self._process as process:
            process.stdin.close()
            assert process.wait(TIMEOUT_S) == 0
