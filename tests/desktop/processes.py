"""Starting, finding and awaiting processes."""

import os
import pathlib
import subprocess
import time
import uuid

TIMEOUT_S = 120


def start_program(*command, **options) -> subprocess.Popen:
    """Starts it, without standard input and with pipes for what it prints."""
    options = {
        "stdin": subprocess.DEVNULL,
        "stdout": subprocess.PIPE,
        "stderr": subprocess.PIPE,
        "encoding": "utf-8",
        **options,
    }
    return subprocess.Popen(command, **options)


def finish(process: subprocess.Popen, given: str | None = None) -> subprocess.CompletedProcess:
    """Waits for its end: returncode, stdout, stderr."""
    with process:
        try:
            stdout, stderr = process.communicate(given, timeout=TIMEOUT_S)
        except subprocess.TimeoutExpired:
            process.kill()
            raise
    return subprocess.CompletedProcess(process.args, process.returncode, stdout, stderr)


def run_program(*command, **options) -> subprocess.CompletedProcess:
    return finish(start_program(*command, **options))


def complaint_of(refused: subprocess.CompletedProcess) -> str:
    """The one line on standard error with which a script has refused to do anything."""
    assert (refused.returncode, refused.stdout) == (1, ""), refused
    assert len(refused.stderr.splitlines()) == 1, refused.stderr
    return refused.stderr


def wait_until(condition, what: str):
    """Returns the first true value of condition(); fails when the deadline has passed."""
    end = time.monotonic() + TIMEOUT_S
    while not (value := condition()):
        assert time.monotonic() < end, f"waited too long until {what}"
        time.sleep(0.02)
    return value


class Marked:
    """An environment that marks the processes of one test: what a program starts inherits it, also
    where it leaves the group and the session of its parent."""

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
                continue  # it has just ended, or is another user's
        return found

    def find(self, text: str) -> list[int]:
        return [pid for pid, line in self.processes().items() if text in line]

    def kill_all(self, signal: int) -> None:
        for pid in self.processes():
            try:
                os.kill(pid, signal)
            except ProcessLookupError:
                continue  # it has just ended
