"""The acceptance kit: packed, unpacked in an empty folder, and run under Wine as a user runs it.

This is how ./check runs the programs of both tiers.
"""

import hashlib
import json
import re
import subprocess
import zipfile
from contextlib import closing

import pytest

from desktop import PROJECT, Desktop
from processes import TIMEOUT_S, Marked, finish, run_program, start_program
from window_maker import WS_POPUP, WS_VISIBLE, WindowMaker

TITLE = "Private title of the user"
RUN_TIMEOUT_S = 10 * TIMEOUT_S
KNOWN = PROJECT / "tests/acceptance/wine_differences.txt"


@pytest.fixture(scope="module")
def kit(tmp_path_factory):
    """The unpacked kit, at a path with a space and an umlaut."""
    packed = run_program(PROJECT / "package", "--acceptance")
    assert packed.returncode == 0, packed.stderr
    [archive] = (PROJECT / "dist").glob("vorlen-monitor-*-acceptance-win64.zip")
    folder = tmp_path_factory.mktemp("kit") / "ein Gerät"
    with zipfile.ZipFile(archive) as opened:
        opened.extractall(folder)
    [unpacked] = folder.iterdir()
    assert unpacked.name == archive.stem
    return unpacked


def files_in(folder):
    return {file.relative_to(folder).as_posix() for file in folder.rglob("*")}


class Run:
    """One run of the kit, while a window of the user is open."""

    def __init__(self, kit):
        self.files_before = files_in(kit)
        with closing(Desktop()) as desktop, closing(WindowMaker(desktop)) as maker:
            maker.create(TITLE, WS_POPUP | WS_VISIBLE)
            overrides = desktop.environment["WINEDLLOVERRIDES"] + ";winedbg.exe="
            marked = Marked(desktop.environment | {"WINEDLLOVERRIDES": overrides})
            self.ended = subprocess.run(
                ["wine", "cmd", "/c", "acceptance.cmd"],
                cwd=kit,
                env=marked.environment,
                stdin=subprocess.DEVNULL,
                stdout=subprocess.PIPE,
                stderr=subprocess.PIPE,
                encoding="utf-8",
                timeout=RUN_TIMEOUT_S,
            )
            self.processes_after = list(marked.processes().values())
        self.file = kit / "acceptance-report.json"
        assert self.file.exists(), f"{self.ended.stdout}\n{self.ended.stderr}"
        self.text = self.file.read_text(encoding="utf-8")
        self.report = json.loads(self.text)


@pytest.fixture(scope="module")
def run(kit):
    return Run(kit)


def failures_in(report):
    """What somebody who cannot repeat the run needs: names and messages, and unexpected outputs."""
    programs = report["programs"]
    tests = [test for program in programs for test in program.get("tests", [])] + report["facts"]
    failed = [
        "\n".join([test["name"], *test.get("failures", [])])
        for test in tests
        if test["result"] == "failed"
    ]
    ended = [
        f"{program['name']}: {program['outcome']}\n{program['output']}"
        for program in programs
        if "outcome" in program
    ]
    return "\n\n".join([*failed, *ended, report.get("recording output", "")])


def test_everything_passes_under_wine(run):
    assert run.ended.returncode == 0, f"{run.ended.stdout}\n{failures_in(run.report)}"
    lines = run.ended.stdout.splitlines()
    assert re.match(r"vorlen-monitor \S+, acceptance on Wine 8 \(8\.\d", lines[0])
    [last] = [line for line in lines if line.startswith(("Passed: ", "Failed: "))]
    totals = run.report["totals"]
    assert totals["failed"] == 0
    assert last == (
        f"Passed: {totals['passed']} passed, 0 failed, {totals['not measured']} not measured; "
        "the report is acceptance-report.json"
    )


def test_the_report_has_every_test_of_both_tiers(run):
    listed = json.loads(
        finish(
            start_program("ctest", "--preset", "release", "--show-only=json-v1", cwd=PROJECT)
        ).stdout
    )
    wanted = [
        test["name"]
        for test in listed["tests"]
        if any(word.endswith("_tests.exe") for word in test["command"])
    ]
    programs = {each["name"]: each for each in run.report["programs"]}
    assert list(programs) == wanted
    assert {each["tier"] for each in programs.values()} == {"simulated", "real"}
    assert all(each["tests"] for name, each in programs.items() if name != "facts")
    assert len(run.report["facts"]) > 40


def test_the_facts_differ_from_the_simulated_desktop_as_listed(run):
    compared = run_program(PROJECT / "scripts/ledger", "--compare", run.file)
    assert compared.returncode == 0
    found = {line.partition(":")[0] for line in compared.stdout.splitlines()}
    lines = KNOWN.read_text(encoding="utf-8").splitlines()
    assert found == {line for line in lines if line and not line.startswith("#")}


def test_the_ledger_has_the_answers_of_wine(run):
    """Except those that the simulated desktop does not have: they may vary."""
    findings = json.loads((PROJECT / "tests/acceptance/findings.json").read_text(encoding="utf-8"))
    page = (PROJECT / "docs/windows.md").read_text(encoding="utf-8")
    for fact in run.report["facts"]:
        [row] = [
            line
            for line in page.splitlines()
            if line.startswith("|") and f"`{fact['name']}`" in line
        ]
        if "| – |" not in row:
            known = findings["Wine 8"]["answers"][fact["name"]]
            assert known == fact.get("answer"), fact["name"]


def test_the_report_names_what_was_tested(run):
    version = re.search(r"project\(.* VERSION (\S+)", (PROJECT / "CMakeLists.txt").read_text())[1]
    assert run.report["kit"] == version
    assert run.report["products"] == [
        f"{name} {version}"
        for name in ("vorlen-monitor", "libvorlen_monitor.dll", "vorlen_runtime.dll")
    ]


def test_the_report_has_no_text_of_the_user(run, kit):
    for private in (TITLE, str(kit), str(kit).replace("/", "\\\\")):
        assert private not in run.text


def test_the_report_has_a_recording_of_the_desktop(run):
    assert run.report["recording"]["format"] == "vorlen-monitor recording"


def test_the_kit_leaves_only_its_report(run, kit):
    assert files_in(kit) == run.files_before | {"acceptance-report.json"}
    left = [line for line in run.processes_after if re.search(r"tests|acceptance|vorlen", line)]
    assert left == []


def test_the_libraries_are_those_of_the_package(kit):
    [archive] = (PROJECT / "dist").glob("vorlen-monitor-*[0-9]-win64.zip")
    with zipfile.ZipFile(archive) as package:
        for file in (kit / "bin").iterdir():
            [name] = [name for name in package.namelist() if name.endswith(f"/bin/{file.name}")]
            packed = hashlib.sha256(package.read(name)).digest()
            assert packed == hashlib.sha256(file.read_bytes()).digest(), file.name


def test_texts_for_windows_have_its_line_ends(kit):
    for name in ("acceptance.cmd", "README.txt"):
        lines = (kit / name).read_bytes().split(b"\n")
        assert lines.pop() == b""
        assert all(line.endswith(b"\r") for line in lines), name
