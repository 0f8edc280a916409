"""scripts/bare-machine: what it refuses. The rest takes an hour and is its own proof."""

import os
import subprocess

import pytest

from desktop import PROJECT


@pytest.fixture
def refused(tmp_path):
    """The script run by a user without rights."""
    (tmp_path / "id").write_text("#!/bin/sh\necho 1000\n")
    (tmp_path / "id").chmod(0o755)

    def run(*arguments: str) -> str:
        """What it said; it did nothing."""
        done = subprocess.run(
            [PROJECT / "scripts/bare-machine", *arguments],
            env={**os.environ, "PATH": f"{tmp_path}:{os.environ['PATH']}"},
            stdin=subprocess.DEVNULL,
            capture_output=True,
            encoding="utf-8",
        )
        assert (done.returncode, done.stdout) == (1, "")
        return done.stderr

    return run


@pytest.mark.parametrize(
    ("arguments", "complaint"),
    [
        (["--kep"], "unknown option --kep; usage: scripts/bare-machine [--keep]"),
        (["--keep", "folder"], "unknown argument folder; usage: scripts/bare-machine [--keep]"),
        ([], "this mounts file systems and makes devices: run it as root"),
    ],
)
def test_a_wrong_call_is_refused_in_one_line(refused, arguments, complaint):
    assert refused(*arguments) == f"bare-machine: {complaint}\n"
