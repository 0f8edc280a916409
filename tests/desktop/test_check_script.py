"""./check with stand-ins for its steps, in a tree whose path has a space and an umlaut."""

import os
import shutil
import subprocess

import pytest

from desktop import PROJECT

STEPS = (
    "behaviour", "boundary", "build", "coverage", "format", "install", "lint", "mistakes", "quotes",
    "with-desktop",
)  # fmt: skip
# Each notes how it was called; the one that runs the tests also does what ctest and pytest do.
STEP = '#!/bin/sh\necho "${0##*/} $*" >>../calls\n'
WITH_DESKTOP = STEP + '[ "$1" != --virtual ] || shift\nexec "$@"\n'
CTEST = """#!/usr/bin/python3
import os, pathlib, shlex, sys
if "PYTEST_ADDOPTS" in os.environ:
    gtest = os.environ["GTEST_OUTPUT"].removeprefix("xml:Z:") + "x_tests.xml"
    ctest = sys.argv[sys.argv.index("--output-junit") + 1]
    options = shlex.split(os.environ["PYTEST_ADDOPTS"])
    for file in (gtest, ctest, *(option.removeprefix("--junitxml=") for option in options)):
        pathlib.Path(file).touch()
"""


@pytest.fixture
def tree(tmp_path):
    root = tmp_path / "ein Gerät"
    shutil.copytree(PROJECT / "scripts" / "lib", root / "scripts" / "lib")
    shutil.copy(PROJECT / "check", root)
    programs = tmp_path / "programs"
    programs.mkdir()
    files = {root / "scripts" / name: STEP for name in STEPS}
    files[root / "scripts" / "with-desktop"] = WITH_DESKTOP
    files[programs / "ctest"] = CTEST
    for file, text in files.items():
        file.write_text(text)
        file.chmod(0o755)
    return root


def check(tree, *arguments) -> subprocess.CompletedProcess:
    programs = tree.parent / "programs"
    # ./check sets these for the tests that it runs, be it this one.
    inherited = {
        name: value
        for name, value in os.environ.items()
        if name not in ("GTEST_OUTPUT", "PYTEST_ADDOPTS")
    }
    return subprocess.run(
        [tree / "check", *arguments],
        env={**inherited, "PATH": f"{programs}:{os.environ['PATH']}", "LC_ALL": "C"},
        stdin=subprocess.DEVNULL,
        capture_output=True,
        encoding="utf-8",
    )


def test_it_ends_with_everything_passed(tree):
    checked = check(tree)
    assert (checked.returncode, checked.stdout) == (0, "")
    assert checked.stderr.splitlines()[-1] == "Everything passed"


def test_results_are_where_the_table_of_behaviours_is_checked(tree):
    assert check(tree).returncode == 0
    results = tree / "build" / "release" / "results"
    assert sorted(file.name for file in results.iterdir()) == [
        "ctest.xml",
        "desktop.xml",
        "x_tests.xml",
    ]
    assert "behaviour build/release/results" in (tree.parent / "calls").read_text().splitlines()


@pytest.mark.parametrize("step", STEPS)
def test_a_step_that_fails_ends_it(tree, step):
    (tree / "scripts" / step).write_text(f"{STEP}exit 7\n")
    failed = check(tree)
    assert failed.returncode == 7
    assert "Everything passed" not in failed.stderr
    assert (tree.parent / "calls").read_text().splitlines()[-1].startswith(f"{step} ")


def test_an_argument_is_refused(tree):
    refused = check(tree, "--fast")
    assert (refused.returncode, refused.stdout) == (1, "")
    assert refused.stderr == "check: unknown argument --fast; ./check takes none\n"
