"""./check with stand-ins for its steps, in a tree whose path has a space and an umlaut."""

import os
import shutil
import signal

import pytest

from desktop import PROJECT
from processes import complaint_of, run_program, wait_until

STEPS = (
    "behaviour", "boundary", "build", "coverage", "format", "install", "ledger", "lint",
    "microsoft-mode", "mistakes", "quotes", "with-desktop",
)  # fmt: skip
# They run beside the others.
STATIC_CHECKS = ("lint", "microsoft-mode")
# Each notes how it was called.
STEP = '#!/bin/sh\necho "${0##*/} $*" >>../calls\n'
PACKAGE = f"{STEP}mkdir -p build/package/kit/bin\n"
WITH_DESKTOP = STEP + '[ "$1" != --virtual ] || shift\nexec "$@"\n'


@pytest.fixture
def tree(tmp_path):
    root = tmp_path / "ein Gerät"
    shutil.copytree(PROJECT / "scripts" / "lib", root / "scripts" / "lib")
    shutil.copy(PROJECT / "check", root)
    shutil.copy(PROJECT / "scripts" / "static-checks", root / "scripts")
    programs = tmp_path / "programs"
    programs.mkdir()
    files = {root / "scripts" / name: STEP for name in STEPS}
    files[root / "package"] = PACKAGE
    files[root / "scripts" / "with-desktop"] = WITH_DESKTOP
    files[programs / "ctest"] = STEP
    for file, text in files.items():
        file.write_text(text)
        file.chmod(0o755)
    return root


def check(tree, *arguments, environment=os.environ):
    path = f"{tree.parent / 'programs'}:{environment['PATH']}"
    environment = {**environment, "PATH": path, "LC_ALL": "C"}
    return run_program(tree / "check", *arguments, env=environment)


def test_it_ends_with_everything_passed(tree):
    checked = check(tree)
    assert (checked.returncode, checked.stdout) == (0, "")
    assert checked.stderr.splitlines()[-1] == "Everything passed"


@pytest.mark.parametrize("step", sorted({*STEPS, "ctest"} - {*STATIC_CHECKS}))
def test_a_step_that_fails_ends_it(tree, step):
    folder = tree.parent / "programs" if step == "ctest" else tree / "scripts"
    (folder / step).write_text(f"{STEP}exit 7\n")
    failed = check(tree)
    assert failed.returncode == 7
    assert "Everything passed" not in failed.stderr
    calls = [call.split()[0] for call in (tree.parent / "calls").read_text().splitlines()]
    assert [call for call in calls if call not in STATIC_CHECKS][-1] == step


@pytest.mark.parametrize("static_check", STATIC_CHECKS)
def test_a_static_check_that_fails_is_shown_at_the_end(tree, static_check):
    (tree / "scripts" / static_check).write_text(f"{STEP}echo what was found\nexit 7\n")
    failed = check(tree)
    assert failed.returncode == 7
    assert failed.stderr.splitlines()[-1] == "what was found"
    assert "coverage " in (tree.parent / "calls").read_text().splitlines()


def test_a_static_check_that_has_failed_is_shown_when_a_step_fails(tree):
    os.mkfifo(tree.parent / "started")
    (tree / "scripts" / "lint").write_text(
        "#!/bin/sh\necho $PPID >../started\necho what was found\nexit 7\n"
    )
    (tree / "scripts" / "coverage").write_text(
        "#!/bin/sh\n"
        "read static_checks <../started\n"
        'while kill -0 "$static_checks" 2>/dev/null; do sleep 0.01; done\n'
        "exit 8\n"
    )
    failed = check(tree)
    assert failed.returncode == 8
    assert failed.stderr.splitlines()[-1] == "what was found"


def test_a_static_check_has_ended_when_it_ends(tree):
    os.mkfifo(tree.parent / "started")
    (tree / "scripts" / "lint").write_text(
        "#!/bin/sh\n"
        "trap 'echo >../ended; exit 1' TERM\n"
        "echo >../started\n"
        "while :; do sleep 0.01; done\n"
    )
    (tree / "scripts" / "coverage").write_text("#!/bin/sh\nread _ <../started\nexit 7\n")
    assert check(tree).returncode == 7
    assert (tree.parent / "ended").exists()


def test_a_killed_one_leaves_no_static_check(tree, marked):
    os.mkfifo(tree.parent / "started")
    (tree / "scripts" / "lint").write_text("#!/bin/sh\necho >../started\nexec sleep 1000\n")
    # The parent of a step is ./check.
    (tree / "scripts" / "coverage").write_text("#!/bin/sh\nread _ <../started\nkill -KILL $PPID\n")
    try:
        assert check(tree, environment=marked.environment).returncode == -signal.SIGKILL
        wait_until(lambda: not marked.processes(), "the static check has ended")
    finally:
        marked.kill_all(signal.SIGKILL)


def test_static_checks_yield_to_the_tests(tree):
    (tree / "scripts" / "lint").write_text(
        "#!/bin/sh\nnice >../priority\n[ ! -e /proc/self/autogroup ] || cat /proc/self/autogroup >>../priority\n"
    )
    assert check(tree).returncode == 0
    for line in (tree.parent / "priority").read_text().splitlines():
        assert line.split()[-1] == "19"


def test_an_argument_is_refused(tree):
    refused = check(tree, "--fast")
    assert complaint_of(refused) == "check: unknown argument --fast; ./check takes none\n"
