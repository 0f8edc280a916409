"""Finding and awaiting the processes that a test has started, directly or through others."""

import os
import pathlib
import time
import uuid

DEADLINE_S = 60


def wait_until(condition, what: str):
    """Returns the first true value of condition(); fails when none comes in time."""
    end = time.monotonic() + DEADLINE_S
    while not (value := condition()):
        assert time.monotonic() < end, f"waited in vain until {what}"
        time.sleep(0.02)
    return value


class Marked:
    """An environment that tells the processes of one test from all others: what a program starts
    inherits it, also where it leaves the group and the session of its parent."""

    def __init__(self, environment: dict[str, str]):
        self._mark = f"VORLEN_TEST_MARK={uuid.uuid4()}"
        name, value = self._mark.split("=")
        self.environment = {**environment, name: value}

    def processes(self) -> dict[int, str]:
        """Process ids with the command lines."""
        found = {}
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if self._mark.encode() in (folder / "environ").read_bytes().split(b"\0"):
                    line = (folder / "cmdline").read_bytes().replace(b"\0", b" ")
                    found[int(folder.name)] = line.decode(errors="replace")
            except (FileNotFoundError, ProcessLookupError, PermissionError):
                continue  # it has just ended, or is somebody else's
        return found

    def find(self, text: str) -> list[int]:
        return [pid for pid, line in self.processes().items() if text in line]

    def kill_all(self, signal: int) -> None:
        for pid in self.processes():
            try:
                os.kill(pid, signal)
            except ProcessLookupError:
                continue  # it has just ended
