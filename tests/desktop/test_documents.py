"""What the documents show and name is what there is."""

import json
import pathlib
import re
import shlex
from contextlib import closing

import pytest

from desktop import PROJECT, RUN, Desktop
from processes import complaint_of, run_program

PAGES = [
    *(PROJECT / name for name in ("README.md", "CONTRIBUTING.md", "runtime/README.md")),
    *sorted(PROJECT.glob("docs/*.md")),
]
# Where a page may take a name to start: headers as they are included, files as of their component.
ROOTS = [PROJECT, PROJECT / "include", PROJECT / "monitor"]


def shown_commands():
    """Each "$ command" of the README with the lines below it, as one block of code shows them."""
    readme = (PROJECT / "README.md").read_text(encoding="utf-8")
    for block in re.findall(r"(?:^    .*\n|^\n(?=    (?!\$)))+", readme, re.MULTILINE):
        lines = [line[4:] for line in block.strip("\n").splitlines()]
        if lines[0].startswith("$ "):
            yield lines[0][2:], "\n".join(lines[1:]) + "\n"


@pytest.mark.usefixtures("prepared")
@pytest.mark.parametrize("command, output", shown_commands())
def test_a_command_of_the_readme_prints_what_is_shown(marked, command, output):
    program, *arguments = shlex.split(command)
    assert program == "./run"
    shown = run_program(RUN, *arguments, env=marked.environment)
    assert (shown.returncode, shown.stdout) == (1 if "1. error" in output else 0, output)


def test_the_readme_shows_commands():
    assert len(list(shown_commands())) >= 2


def commands_of(page) -> list[str]:
    """The commands in the blocks of code of a page, without comments and prompts."""
    text = page.read_text(encoding="utf-8").replace("\\\n", " ")
    lines = re.findall(
        r"^ {4,}(?:\$ )?((?:\./|scripts/|ctest|cmake|/usr/bin/).*)$", text, re.MULTILINE
    )
    lines = [re.sub(r" +", " ", line.partition("  #")[0]).strip() for line in lines]
    return [command for line in lines for command in line.split(" && ")]


@pytest.fixture(scope="module")
def shared_desktop():
    with closing(Desktop()) as opened:
        yield opened


def succeeds(*command, **options) -> str:
    done = run_program(*command, cwd=PROJECT, **options)
    assert done.returncode == 0, done.stdout + done.stderr
    return done.stdout


# Commands that take long, change the tree or contain this test are tried in another way: tests are
# listed instead of run, files are compared instead of written.
@pytest.mark.usefixtures("prepared")
@pytest.mark.parametrize(
    "command",
    # The commands of the host guide are for Windows; test_package.py tries them.
    sorted({each for page in PAGES if page.name != "host-guide.md" for each in commands_of(page)}),
)
def test_a_command_that_a_page_shows_can_be_given(shared_desktop, marked, command):
    words = shlex.split(command.removeprefix("scripts/with-desktop --virtual "))
    program, *arguments = words
    if command == "./run viewer":
        # No screen shows it here; tests/desktop/test_run_script.py has one.
        assert complaint_of(run_program(*words, cwd=PROJECT, env=marked.environment))
    elif program == "./run":
        done = run_program(*words, cwd=PROJECT, env=marked.environment)
        assert done.returncode == (1 if "kit_at_30_hz.json" in command else 0), done.stderr
    elif program in ("./check", "./bench", "./package"):
        assert complaint_of(run_program(PROJECT / program, "--no-such-option"))
    elif program == "cmake":
        presets = json.loads((PROJECT / "CMakePresets.json").read_text(encoding="utf-8"))
        kind = "buildPresets" if "--build" in arguments else "configurePresets"
        assert arguments[-1] in [preset["name"] for preset in presets[kind]]
    elif program == "ctest":
        assert re.search(r"Total Tests: [1-9]", succeeds("ctest", *arguments, "-N"))
    elif program == "wine":
        listed = succeeds(*words, "--gtest_list_tests", env=shared_desktop.environment)
        assert re.search(r"^  \w+", listed, re.MULTILINE)
    elif words[:3] == ["/usr/bin/python3", "-m", "pytest"]:
        succeeds(*words, "--collect-only", "--quiet")
    elif program == "scripts/build":
        succeeds(*words)
    elif program == "scripts/recordings":
        assert complaint_of(run_program(PROJECT / program, "--no-such-option"))
    elif program == "scripts/boundary":
        succeeds(program)
    else:
        known = ("scripts/format", "scripts/behaviour", "scripts/ledger", "scripts/mistakes")
        assert program in known
        succeeds(program, "--check")


def test_the_performance_page_shows_the_recorded_results():
    succeeds("scripts/performance", "--check")


@pytest.mark.parametrize("page", PAGES, ids=lambda page: str(page.relative_to(PROJECT)))
def test_every_file_that_a_page_names_exists(page):
    text = page.read_text(encoding="utf-8")
    for name in re.findall(r"`(?:\./)?((?:[\w.-]+/)+[\w.-]*)`", text):
        assert name.startswith("build/") or any(exists(root, name) for root in ROOTS), name


def test_the_support_page_has_a_section_for_each_status_code_and_finding():
    codes = (PROJECT / "include/vorlen/status.h").read_text(encoding="utf-8")
    statuses = re.findall(r"^    X\((MONITOR_\w+), (\d+),", codes, re.MULTILINE)
    table = (PROJECT / "tools/vorlen-monitor/doctor/findings.cpp").read_text(encoding="utf-8")
    findings = re.findall(r'^    \{"([a-z0-9-]+)", \w+\},$', table, re.MULTILINE)
    assert statuses and findings
    page = (PROJECT / "docs/support.md").read_text(encoding="utf-8")
    sections = re.findall(r"^### (.+)$", page, re.MULTILINE)
    assert sections == [f"{value} {name}" for name, value in statuses] + findings


def test_every_link_within_the_support_page_leads_to_a_section():
    page = (PROJECT / "docs/support.md").read_text(encoding="utf-8")
    links = re.findall(r"\]\(#([^)]+)\)", page)
    assert links
    assert set(links) <= set(re.findall(r"^### (.+)$", page, re.MULTILINE))


def exists(root: pathlib.Path, name: str) -> bool:
    """A name without an ending stands for a header with its source."""
    return (root / name).exists() or any(root.glob(f"{name}.*"))
