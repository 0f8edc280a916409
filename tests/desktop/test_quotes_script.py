"""scripts/quotes in a tree of its own."""

import shutil

import pytest

from desktop import PROJECT
from processes import complaint_of, run_program

SOURCE = "first\nint main(void) {\n    return 0;\n}\nlast\n"
QUOTE = '<!-- program.c from "int main" to "}}" -->\n\n```c\n{}```\n'
BODY = "int main(void) {\n    return 0;\n}\n"


@pytest.fixture
def tree(tmp_path):
    (tmp_path / "scripts").mkdir()
    (tmp_path / "docs").mkdir()
    shutil.copy2(PROJECT / "scripts" / "quotes", tmp_path / "scripts")
    (tmp_path / "program.c").write_text(SOURCE)
    (tmp_path / "README.md").write_text("Nothing quoted.\n")
    return tmp_path


def quotes(tree, *arguments):
    return run_program(tree / "scripts" / "quotes", *arguments)


def test_a_quote_is_written_and_then_holds(tree):
    page = tree / "docs" / "page.md"
    page.write_text(QUOTE.format("something else\n"))
    assert quotes(tree).returncode == 0
    assert page.read_text() == QUOTE.format(BODY)
    assert quotes(tree, "--check").returncode == 0


def test_a_quote_that_does_not_hold_is_named_and_left_alone(tree):
    stale = QUOTE.format("int main(void) {\n}\n")
    (tree / "README.md").write_text(stale)
    assert complaint_of(quotes(tree, "--check")) == (
        "quotes: README.md differs from the files that it quotes; this updates it: "
        "scripts/quotes\n"
    )
    assert (tree / "README.md").read_text() == stale


@pytest.mark.parametrize(
    "before, after, complaint",
    [
        ("program.c", "other.c", "quotes: there is no file other.c to quote from\n"),
        (
            "int main",
            "int start",
            "quotes: program.c has no line with “int start”: name one that it has\n",
        ),
    ],
)
def test_a_quote_of_nothing_is_refused(tree, before, after, complaint):
    (tree / "README.md").write_text(QUOTE.format(BODY).replace(before, after, 1))
    assert complaint_of(quotes(tree)) == complaint


def test_an_unknown_argument_is_refused(tree):
    assert complaint_of(quotes(tree, "--write")) == "quotes: usage: scripts/quotes [--check]\n"
