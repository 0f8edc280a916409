"""scripts/mistakes in a tree of its own, whose build and tests are stand-ins."""

import os
import shutil
import signal
import subprocess

import pytest

from desktop import PROJECT
from processes import complaint_of, finish, start_program, wait_until

SOURCE = "int one = 1;\nint two = 2;\n"
FITTING = "[a.cpp]\none is wrong\n-int one = 1;\n+int one = 3;\ntwo is wrong\n-two = 2\n+two = 3\n"

# Lists what the real one would, and with it a tracked file that was deleted.
GIT = """#!/bin/sh
printf 'a.cpp\\0deleted.cpp\\0new.cpp\\0scripts/build\\0scripts/with-desktop\\0'
"""
BUILD = """#!/bin/sh
[ -f new.cpp ] && [ ! -e deleted.cpp ]
"""
# These tests catch a wrong one, and nothing else.
TESTS = """#!/bin/sh
grep -q 'one = 1' a.cpp || { echo '[  FAILED  ] Numbers.one'; exit 1; }
"""
# These do not end while a mistake is there. The shell is the one that ends on a signal.
ENDLESS_TESTS = """#!/bin/sh
grep -q 'one = 1' a.cpp || { : >../started; exec sleep 600; }
"""


class Tree:
    def __init__(self, root):
        self.root = root
        self.copy = root / "build" / "mistakes"
        self.write("a.cpp", SOURCE)
        self.write("new.cpp", "")
        self.write("tests/mistakes.txt", FITTING)
        self.write_program("scripts/build", BUILD)
        self.write_program("scripts/with-desktop", TESTS)
        self.write_program("programs/git", GIT)
        shutil.copy(PROJECT / "scripts" / "mistakes", root / "scripts")

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def write_program(self, name, text):
        self.write(name, text).chmod(0o755)

    def start(self, *arguments, path=None) -> subprocess.Popen:
        path = path or f"{self.root / 'programs'}:{os.environ['PATH']}"
        environment = {**os.environ, "PATH": path, "PYTHONUTF8": "1"}
        return start_program(self.root / "scripts" / "mistakes", *arguments, env=environment)

    def run(self, *arguments, **options) -> subprocess.CompletedProcess:
        return finish(self.start(*arguments, **options))


@pytest.fixture
def tree(tmp_path):
    return Tree(tmp_path)


def test_a_check_counts_the_mistakes_that_fit_and_makes_none(tree):
    checked = tree.run("--check")
    assert (checked.returncode, checked.stdout, checked.stderr) == (0, "2 mistakes fit\n", "")
    assert tree.run("--check", "two").stdout == "1 mistakes fit\n"
    assert not tree.copy.exists()


@pytest.mark.parametrize(
    ("text", "complaint"),
    [
        ("[b.cpp]\nwrong\n-a\n+b\n", "tests/mistakes.txt:2: “wrong” cannot be applied to b.cpp"),
        ("[a.cpp]\nwrong\n-three\n+b\n", "tests/mistakes.txt:3: “wrong” does not fit a.cpp"),
        ("[a.cpp]\nwrong\n-int\n+long\n", "the text that it removes 2 times, not once"),
        ("[a.cpp]\nwrong\n", "tests/mistakes.txt:2: “wrong” changes nothing"),
        ("[a.cpp]\nwrong\n-one\n+one\n", "tests/mistakes.txt:2: “wrong” changes nothing"),
        ("-one\n", "tests/mistakes.txt:1: a change without a mistake"),
        (f"{FITTING}[a.cpp]\n+one\n", "tests/mistakes.txt:9: a change without a mistake"),
        ("[a.cpp]\nwrong\n+one\n", "tests/mistakes.txt:3: a text that replaces nothing"),
        ("wrong\n-a\n+b\n", "tests/mistakes.txt:1: a mistake without a file"),
        ("# None.\n", "no mistake has “” in its file or name"),
    ],
)
def test_a_list_that_does_not_hold_is_refused_in_one_line(tree, text, complaint):
    tree.write("tests/mistakes.txt", text)
    assert complaint in complaint_of(tree.run("--check"))


def test_every_misfit_has_a_line(tree):
    tree.write("a.cpp", "")
    checked = tree.run("--check")
    assert checked.returncode == 1
    assert [line.split(": ")[0] for line in checked.stderr.splitlines()] == [
        "tests/mistakes.txt:3",
        "tests/mistakes.txt:6",
    ]


@pytest.mark.parametrize(
    ("arguments", "complaint"),
    [
        (["--chek"], "mistakes: unknown option --chek; usage: "),
        (["one", "two"], "mistakes: unknown argument two; usage: "),
        (["three"], "mistakes: no mistake has “three” in its file or name"),
    ],
)
def test_a_wrong_argument_is_refused_in_one_line(tree, arguments, complaint):
    assert complaint in complaint_of(tree.run(*arguments))


def test_a_missing_list_or_git_is_named_in_one_line(tree):
    assert "mistakes: there is no git" in complaint_of(tree.run(path="/nonexistent"))
    tree.write_program("programs/git", "#!/bin/sh\necho 'no clone' >&2\nexit 128\n")
    assert "git cannot list the files of the tree, which has to be a clone" in complaint_of(
        tree.run()
    )
    (tree.root / "tests" / "mistakes.txt").unlink()
    assert "mistakes: cannot read tests/mistakes.txt" in complaint_of(tree.run())


def test_a_mistake_that_no_test_catches_is_named(tree):
    tree.copy.mkdir(parents=True)
    (tree.copy / "deleted.cpp").touch()
    tried = tree.run()
    assert tried.returncode == 1
    assert tried.stdout.splitlines() == [
        "a.cpp: one is wrong: caught by Numbers.one",
        "a.cpp: two is wrong: NOT CAUGHT",
        "1 of 2 mistakes were caught",
    ]
    assert tried.stderr == "mistakes: not caught: two is wrong\n"
    assert (tree.copy / "a.cpp").read_text(encoding="utf-8") == SOURCE


def test_ctrl_c_ends_it_quietly_with_the_copy_restored(tree):
    tree.write_program("scripts/with-desktop", ENDLESS_TESTS)
    process = tree.start()
    wait_until((tree.root / "build/started").exists, "the tests have started")
    assert "one = 3" in (tree.copy / "a.cpp").read_text(encoding="utf-8")
    process.send_signal(signal.SIGINT)
    ended = finish(process)
    assert (ended.returncode, ended.stdout, ended.stderr) == (130, "", "")
    assert (tree.copy / "a.cpp").read_text(encoding="utf-8") == SOURCE
