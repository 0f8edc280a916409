"""scripts/behaviour: the table of behaviours against the results of the tests."""

import shutil
import subprocess

import pytest

from desktop import PROJECT

GOOGLETEST = """<?xml version="1.0"?><testsuites><testsuite name="Prefix/Suite">
<testcase name="is_right/3" classname="Prefix/Suite" status="run"/>
<testcase name="is_left_out" classname="Suite" status="notrun"/></testsuite></testsuites>"""
PYTEST = """<testsuites><testsuite><testcase classname="test_x" name="test_a[1]"/>
<testcase classname="test_x" name="test_skipped"><skipped/></testcase></testsuite></testsuites>"""
CTEST = """<testsuite><testcase name="compiles" classname="compiles" status="run"/></testsuite>"""


@pytest.fixture
def check(tmp_path):
    for folder in ("scripts", "docs", "results"):
        (tmp_path / folder).mkdir()
    shutil.copy(PROJECT / "scripts" / "behaviour", tmp_path / "scripts")
    results = {"x_tests.xml": GOOGLETEST, "desktop.xml": PYTEST, "ctest.xml": CTEST}
    for name, text in results.items():
        (tmp_path / "results" / name).write_text(text, encoding="utf-8")

    def run(*rows: str) -> subprocess.CompletedProcess:
        table = "\n".join(["# Behaviour", "", "| Behaviour | Proof |", "|---|---|", *rows, ""])
        (tmp_path / "docs" / "behaviour.md").write_text(table, encoding="utf-8")
        return subprocess.run(
            [tmp_path / "scripts" / "behaviour", tmp_path / "results"],
            stdin=subprocess.DEVNULL,
            capture_output=True,
            encoding="utf-8",
        )

    return run


def test_tests_of_every_kind_are_found_without_their_parameters(check):
    checked = check(
        "| One. | `Suite.is_right` `tests/desktop/test_x.py::test_a` |",
        "| Two. | `ctest:compiles` |",
    )
    assert (checked.returncode, checked.stderr) == (0, "")
    assert checked.stdout == "2 behaviours, each with a test that ran\n"


@pytest.mark.parametrize(
    ("row", "complaint"),
    [
        ("| A. | `Suite.is_wrong` |", "no test Suite.is_wrong ran"),
        ("| A. | `Suite.is_left_out` |", "no test Suite.is_left_out ran"),
        ("| A. | `tests/desktop/test_x.py::test_skipped` |", "test_skipped ran"),
        ("| A. | `Suite.is_right` `ctest:missing` |", "no test ctest:missing ran"),
        ("| A. | |", "a row has a behaviour and the names of its tests"),
        ("| A. |", "a row has a behaviour and the names of its tests"),
    ],
)
def test_a_row_without_a_test_that_ran_is_named_by_its_line(check, row, complaint):
    checked = check("| Right. | `Suite.is_right` |", row)
    assert checked.returncode == 1
    assert checked.stderr.startswith("docs/behaviour.md:6: ")
    assert complaint in checked.stderr.splitlines()[0]


def test_a_result_that_was_cut_off_is_told_in_one_line(check, tmp_path):
    cut = tmp_path / "results" / "x_tests.xml"
    cut.write_text(GOOGLETEST[: len(GOOGLETEST) // 2], encoding="utf-8")
    checked = check("| Right. | `Suite.is_right` |")
    assert (checked.returncode, checked.stdout) == (1, "")
    assert checked.stderr == (
        f"behaviour: {cut} is not a whole result; this command makes it: ./check\n"
    )


def test_an_empty_table_proves_nothing(check):
    assert check().returncode == 1
