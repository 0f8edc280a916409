"""scripts/bare-machine: what it refuses. Everything else takes an hour and is not tested here."""

import os

import pytest

from desktop import PROJECT
from processes import complaint_of, run_program

USAGE = "usage: scripts/bare-machine [--keep] [root|user]"


@pytest.fixture
def refused(tmp_path):
    """The script run by a user without rights."""
    (tmp_path / "id").write_text("#!/bin/sh\necho 1000\n")
    (tmp_path / "id").chmod(0o755)

    def run(*arguments: str) -> str:
        environment = {**os.environ, "PATH": f"{tmp_path}:{os.environ['PATH']}"}
        script = PROJECT / "scripts/bare-machine"
        return complaint_of(run_program(script, *arguments, env=environment))

    return run


@pytest.mark.parametrize(
    ("arguments", "complaint"),
    [
        (["--kep"], f"unknown argument --kep; {USAGE}"),
        (["--keep", "folder"], f"unknown argument folder; {USAGE}"),
        (["user", "root"], f"unknown argument root; {USAGE}"),
        ([], "this mounts file systems and makes devices: run it as root"),
    ],
)
def test_a_wrong_call_is_refused_in_one_line(refused, arguments, complaint):
    assert refused(*arguments) == f"bare-machine: {complaint}\n"
