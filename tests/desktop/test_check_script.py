"""./check with stand-ins for its steps, in a tree whose path has a space and an umlaut."""

import os
import pathlib
import shutil

import pytest

from desktop import PROJECT
from processes import complaint_of, run_program

STEPS = (
    "behaviour", "boundary", "build", "coverage", "format", "install", "ledger",
    "mistakes", "quotes", "static-checks", "with-desktop",
)  # fmt: skip
# Each notes how it was called.
STEP = '#!/bin/sh\necho "${0##*/} $*" >>../calls\n'
PACKAGE = f"{STEP}mkdir -p build/package/kit/bin\n"
WITH_DESKTOP = STEP + '[ "$1" != --virtual ] || shift\nexec "$@"\n'
CTEST = "#!/bin/sh\n"


@pytest.fixture
def tree(tmp_path):
    root = tmp_path / "ein Gerät"
    shutil.copytree(PROJECT / "scripts" / "lib", root / "scripts" / "lib")
    shutil.copy(PROJECT / "check", root)
    programs = tmp_path / "programs"
    programs.mkdir()
    files = {root / "scripts" / name: STEP for name in STEPS}
    files[root / "package"] = PACKAGE
    files[root / "scripts" / "with-desktop"] = WITH_DESKTOP
    files[programs / "ctest"] = CTEST
    for file, text in files.items():
        file.write_text(text)
        file.chmod(0o755)
    return root


def check(tree, *arguments):
    path = f"{tree.parent / 'programs'}:{os.environ['PATH']}"
    environment = {**os.environ, "PATH": path, "LC_ALL": "C"}
    return run_program(tree / "check", *arguments, env=environment)


def test_it_ends_with_everything_passed(tree):
    checked = check(tree)
    assert (checked.returncode, checked.stdout) == (0, "")
    assert checked.stderr.splitlines()[-1] == "Everything passed"


@pytest.mark.parametrize("step", sorted(set(STEPS) - {"static-checks"}))
def test_a_step_that_fails_ends_it(tree, step):
    (tree / "scripts" / step).write_text(f"{STEP}exit 7\n")
    failed = check(tree)
    assert failed.returncode == 7
    assert "Everything passed" not in failed.stderr
    calls = (tree.parent / "calls").read_text().splitlines()
    assert [call.split()[0] for call in calls if call != "static-checks "][-1] == step


def test_static_checks_that_fail_are_shown_at_the_end(tree):
    (tree / "scripts" / "static-checks").write_text(f"{STEP}echo what was found\nexit 7\n")
    failed = check(tree)
    assert failed.returncode == 7
    assert failed.stderr.splitlines()[-1] == "what was found"
    assert "coverage " in (tree.parent / "calls").read_text().splitlines()


def test_static_checks_end_with_it(tree):
    started = tree.parent / "started"
    os.mkfifo(started)
    (tree / "scripts" / "static-checks").write_text(
        f"#!/bin/sh\necho $$ >'{started}'\nexec sleep 1000\n"
    )
    (tree / "scripts" / "coverage").write_text(
        f"#!/bin/sh\nread id <'{started}'\necho $id >&2\nexit 7\n"
    )
    failed = check(tree)
    assert failed.returncode == 7
    process = pathlib.Path("/proc", failed.stderr.splitlines()[-1])
    assert not process.exists()


def test_an_argument_is_refused(tree):
    refused = check(tree, "--fast")
    assert complaint_of(refused) == "check: unknown argument --fast; ./check takes none\n"
