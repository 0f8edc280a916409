"""Another program's windows, which a test makes, changes and destroys."""

import select
import subprocess

from desktop import BUILD, Desktop
from processes import TIMEOUT_S

WS_POPUP = 0x80000000
WS_DISABLED = 0x08000000
WS_VISIBLE = 0x10000000
CLASS_NAME = "VorlenTestWindow"


class WindowMaker:
    def __init__(self, desktop: Desktop):
        self._process = desktop.start(
            BUILD / "tests/window_maker.exe",
            stdin=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
        )

    def _ask(self, command: str) -> str:
        self._process.stdin.write(command + "\n")
        self._process.stdin.flush()
        answer = self._process.stdout.readline().rstrip("\r\n")
        assert answer, "the window maker has ended"
        return answer

    def create(self, title: str, style: int = WS_POPUP) -> int:
        return int(self._ask(f"create {style} 0 {title}"))

    def show(self, window: int) -> None:
        self._ask(f"show {window}")

    def destroy(self, window: int) -> None:
        self._ask(f"destroy {window}")

    def start_series(self, count: int) -> None:
        """Begins a series of windows, and does not wait for its end."""
        self._process.stdin.write(f"series {count}\n")
        self._process.stdin.flush()

    def has_answered(self) -> bool:
        return bool(select.select([self._process.stdout], [], [], 0)[0])

    def kill(self) -> None:
        with self._process as process:
            process.kill()

    def close(self) -> None:
        with self._process as process:
            process.stdin.close()
            assert process.wait(TIMEOUT_S) == 0
