"""A virtual desktop with a fresh Wine prefix, for tests that run Windows programs."""

import json
import os
import pathlib
import subprocess
import sys
import time

from processes import TIMEOUT_S, finish, start_program

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BUILD = PROJECT / "build/release"
# The same folder as that of the test programs (tests/support/library.h).
PROGRAMS = pathlib.Path(os.environ.get("VORLEN_PRODUCTS", BUILD / "bin"))
WITH_DESKTOP = PROJECT / "scripts/with-desktop"
RUN = PROJECT / "run"

# Prints its environment, and ends when its standard input is closed.
HOLD_OPEN = (
    "import json, os, sys; print(json.dumps(dict(os.environ)), flush=True); sys.stdin.read()"
)


class Desktop:
    """Two outputs: DUMMY0, 3840x2160 at 60 Hz, which also has the modes 3840x2160_30 and 1920x1080;
    DUMMY1 to its right, 1920x1080 at 60 Hz."""

    def __init__(self):
        self._holder = subprocess.Popen(
            [WITH_DESKTOP, "--virtual", sys.executable, "-c", HOLD_OPEN],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
        )
        self.environment: dict[str, str] = json.loads(self._holder.stdout.readline())
        self.outputs_changed = False
        self.used_at = time.monotonic()

    def close(self) -> None:
        self._holder.communicate(timeout=TIMEOUT_S)
        assert self._holder.returncode == 0

    def start(self, program: str | os.PathLike, *arguments: str, **options) -> subprocess.Popen:
        """Starts a Windows program; a name without a folder is one of this project's."""
        options = {"env": self.environment, **options}
        return start_program("wine", PROGRAMS / program, *arguments, **options)

    def run(self, program: str | os.PathLike, *arguments: str) -> subprocess.CompletedProcess:
        """Runs a Windows program to its end."""
        return finish(self.start(program, *arguments))

    def xrandr(self, *arguments: str) -> None:
        """Changes the outputs. The query makes the server notice which are connected now."""
        self.outputs_changed = True
        for step in (arguments, ("--query",)):
            subprocess.run(
                ["xrandr", *step],
                env=self.environment,
                check=True,
                stdout=subprocess.DEVNULL,
                timeout=TIMEOUT_S,
            )
