"""scripts/behaviour in a tree of its own."""

import re
import shutil

import pytest

from desktop import PROJECT
from processes import complaint_of, run_program

SCRIPT = PROJECT / "scripts" / "behaviour"
GROUPS = re.findall(
    r'^    "(.*)",$',
    SCRIPT.read_text(encoding="utf-8").partition("GROUPS = (")[2].partition(")\n")[0],
    re.MULTILINE,
)


@pytest.fixture
def tree(tmp_path):
    """A tree with one promise in each group."""
    for folder in ("scripts", "docs", "tests/some"):
        (tmp_path / folder).mkdir(parents=True)
    shutil.copy2(SCRIPT, tmp_path / "scripts")
    promises = (
        f"// Promise ({group}): One,\n// and more.\nTEST_P(Unit, behaves_{number}) {{}}\n"
        for number, group in enumerate(GROUPS)
    )
    (tmp_path / "tests/some/unit_test.cpp").write_text("\n".join(promises), encoding="utf-8")
    return tmp_path


def behaviour(tree, *arguments):
    return run_program(tree / "scripts" / "behaviour", *arguments)


def page(tree):
    return (tree / "docs" / "behaviour.md").read_text(encoding="utf-8")


def add(tree, name, text):
    (tree / "tests" / "some" / name).write_text(text, encoding="utf-8")


def test_the_page_has_the_promises_of_all_groups_in_order(tree):
    assert behaviour(tree).returncode == 0
    assert re.findall(r"^## (.*)$", page(tree), re.MULTILINE) == GROUPS
    assert f"\n## {GROUPS[1]}\n\n- One, and more.  \n  `Unit.behaves_1`\n" in page(tree)
    assert behaviour(tree, "--check").returncode == 0


def test_a_python_test_proves_a_promise_also_with_parameters(tree):
    add(
        tree,
        "test_more.py",
        f'# Promise ({GROUPS[0]}): Two.\n@pytest.mark.parametrize("a", [1])\ndef test_two(a):\n',
    )
    assert behaviour(tree).returncode == 0
    assert "- Two.  \n  `test_two`\n" in page(tree)


def test_a_page_that_differs_names_the_command_that_writes_it(tree):
    expected = (
        "behaviour: docs/behaviour.md differs from the promises of the tests; "
        "this command writes it: scripts/behaviour\n"
    )
    assert complaint_of(behaviour(tree, "--check")) == expected
    assert behaviour(tree).returncode == 0
    (tree / "docs" / "behaviour.md").write_text(page(tree) + "More.\n", encoding="utf-8")
    assert complaint_of(behaviour(tree, "--check")) == expected


def test_a_group_without_a_promise_is_an_error(tree):
    (tree / "tests/some/unit_test.cpp").unlink()
    assert "no test has a promise of the group" in complaint_of(behaviour(tree))


@pytest.mark.parametrize(
    ("text", "expected"),
    [
        ("// Promise (none): A.\nTEST(Unit, a) {}\n", "other_test.cpp:1: no group “none”"),
        ("\n// Promise (GROUP): A.\nint a;\n", "other_test.cpp:2: a promise without a test"),
        ("// Promise (GROUP): A.\nTEST(Unit, DISABLED_a) {}\n", "a promise without a test"),
    ],
)
def test_a_promise_that_proves_nothing_is_named_by_its_line(tree, text, expected):
    add(tree, "other_test.cpp", text.replace("GROUP", GROUPS[0]))
    assert expected in complaint_of(behaviour(tree))


def test_an_unknown_argument_is_refused(tree):
    assert complaint_of(behaviour(tree, "--write")) == (
        "behaviour: usage: scripts/behaviour [--check]\n"
    )
