"""What the documents show and name is what there is."""

import pathlib
import re
import shlex

import pytest

from desktop import PROJECT, RUN
from processes import run_program

PAGES = [
    *(PROJECT / name for name in ("README.md", "CONTRIBUTING.md", "runtime/README.md")),
    *sorted(PROJECT.glob("docs/*.md")),
]
# Where a page may take a name to start: headers as they are included, files as of their component.
ROOTS = [PROJECT, PROJECT / "include", PROJECT / "monitor"]


def shown_commands():
    """Each "$ command" of the README with the lines below it, as one block of code shows them."""
    readme = (PROJECT / "README.md").read_text(encoding="utf-8")
    for block in re.findall(r"(?:^    .*\n)+", readme, re.MULTILINE):
        lines = [line[4:] for line in block.splitlines()]
        if lines[0].startswith("$ "):
            yield lines[0][2:], "\n".join(lines[1:]) + "\n"


@pytest.mark.usefixtures("prepared")
@pytest.mark.parametrize("command, output", shown_commands())
def test_a_command_of_the_readme_prints_what_is_shown(marked, command, output):
    program, *arguments = shlex.split(command)
    assert program == "./run"
    shown = run_program(RUN, *arguments, env=marked.environment)
    assert (shown.returncode, shown.stdout) == (0, output)


def test_the_readme_shows_commands():
    assert len(list(shown_commands())) >= 2


@pytest.mark.parametrize("page", PAGES, ids=lambda page: str(page.relative_to(PROJECT)))
def test_every_file_that_a_page_names_exists(page):
    text = page.read_text(encoding="utf-8")
    for name in re.findall(r"`(?:\./)?((?:[\w.-]+/)+[\w.-]*)`", text):
        assert name.startswith("build/") or any(exists(root, name) for root in ROOTS), name


def exists(root: pathlib.Path, name: str) -> bool:
    """A name without an ending stands for a header with its source."""
    return (root / name).exists() or any(root.glob(f"{name}.*"))
