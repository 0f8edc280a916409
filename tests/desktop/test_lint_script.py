"""scripts/lint in a tree of its own, whose shellcheck is a stand-in. No source is checked here."""

import os
import shutil
import subprocess

import pytest

from desktop import PROJECT
from processes import run_program

SCRIPT = "#!/usr/bin/env bash\n"


@pytest.fixture
def lint(tmp_path):
    shutil.copytree(PROJECT / "scripts", tmp_path / "scripts")
    (tmp_path / ".ci").mkdir()
    (tmp_path / ".ci" / "run").write_text(SCRIPT)
    programs = tmp_path / "programs"
    programs.mkdir()
    (programs / "shellcheck").write_text('#!/bin/sh\nprintf "%s\\n" "$@"\n')
    (programs / "shellcheck").chmod(0o755)

    def run(line: str) -> subprocess.CompletedProcess:
        (tmp_path / "check").write_text(f"{SCRIPT}{line}\n")
        environment = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"}
        return run_program(tmp_path / "scripts" / "lint", env=environment)

    return run


@pytest.mark.parametrize(
    "line",
    [
        "tool --output /dev/null",
        "tool --output=/dev/null file",
        'tool --output-log "/dev/stdout"',
        "tool -logfile /dev/null",
        "tool -o /dev/null",
        "tool -o/dev/null",
        'run(["tool", "--output", "/dev/null"])',
    ],
)
def test_a_device_as_the_output_file_of_a_tool_is_refused(lint, line):
    refused = lint(line)
    assert refused.returncode == 1
    assert refused.stderr.splitlines() == [
        f"check:2:{line}",
        "lint: a tool is given a device as its output file (see above): redirect its output instead",
    ]


@pytest.mark.parametrize(
    "line", ["tool >/dev/null 2>&1", "[[ -c /dev/null ]]", "tool --output file </dev/null"]
)
def test_a_device_that_is_only_opened_is_accepted(lint, line):
    assert "is given a device" not in lint(line).stderr


def test_every_shell_script_is_checked(lint):
    checked = lint("").stdout.splitlines()
    assert {"check", ".ci/run", "scripts/lint", "scripts/with-desktop"} <= set(checked)
    assert "scripts/mistakes" not in checked
