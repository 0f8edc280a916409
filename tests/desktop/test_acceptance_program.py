"""The program behind acceptance.cmd, in a kit whose test programs are stand-ins."""

import json
import shutil
from contextlib import closing

import pytest

from desktop import BUILD, PROJECT, Desktop
from processes import run_program

STAND_IN = "acceptance_stand_in.exe"


@pytest.fixture(scope="module")
def shared_desktop():
    with closing(Desktop()) as opened:
        yield opened


def make_kit(folder):
    """The command of this kit ends at once without writing anything."""
    for place in ("bin", "tests"):
        (folder / place).mkdir(parents=True)
    shutil.copy(BUILD / "tests/acceptance.exe", folder / "tests")
    shutil.copy(BUILD / "tests/acceptance" / STAND_IN, folder / "tests")
    shutil.copy(BUILD / "tests/window_maker.exe", folder / "bin/vorlen-monitor.exe")
    return folder


@pytest.fixture
def kit(tmp_path):
    return make_kit(tmp_path / "ein Gerät")


def program(name, test, tier="simulated", file=STAND_IN, seconds=60):
    arguments = f"--gtest_filter=StandIn.{test}"
    return {"name": name, "file": file, "arguments": arguments, "tier": tier, "seconds": seconds}


class Run:
    def __init__(self, desktop, kit, *programs, **environment):
        listed = json.dumps({"version": "1.2.3", "programs": programs})
        (kit / "tests/programs.json").write_text(listed, encoding="utf-8")
        self.ended = start(desktop, kit, **environment)
        self.report = json.loads((kit / "acceptance-report.json").read_text(encoding="utf-8"))
        self.programs = {each["name"]: each for each in self.report["programs"]}


def start(desktop, kit, **environment):
    return run_program(
        *("wine", kit / "tests/acceptance.exe"), env=desktop.environment | environment
    )


def test_a_test_that_passes_and_one_that_fails_are_in_the_report(shared_desktop, kit):
    run = Run(shared_desktop, kit, program("good", "passes"), program("bad", "fails"))
    [passed] = run.programs["good"]["tests"]
    [failed] = run.programs["bad"]["tests"]
    assert (passed["name"], passed["result"]) == ("StandIn.passes", "passed")
    assert (failed["name"], failed["result"]) == ("StandIn.fails", "failed")
    assert "private" in failed["failures"][0]
    assert " 1/3 good: 1 passed\n" in run.ended.stdout
    assert " 2/3 bad: 0 passed, 1 failed\n      failed: StandIn.fails\n" in run.ended.stdout


def test_texts_of_the_real_desktop_are_left_out_of_failures(shared_desktop, kit):
    run = Run(shared_desktop, kit, program("bad", "fails", "real"))
    [failed] = run.programs["bad"]["tests"]
    assert "private" not in failed["failures"][0]
    assert 'L"..."' in failed["failures"][0]


def test_what_facts_found_has_a_place_of_its_own(shared_desktop, kit):
    run = Run(shared_desktop, kit, program("facts", "passes:*.is_not_measured", "real"))
    assert run.report["facts"] == [
        {
            "name": "StandIn.passes",
            "result": "passed",
            "answer": "found",
            "details": {"count": "3"},
        },
        {
            "name": "StandIn.is_not_measured",
            "result": "not measured",
            "reason": "there is nothing to measure",
        },
    ]
    assert "StandIn.is_not_measured: there is nothing to measure\n" in run.ended.stdout


def test_a_suite_of_facts_that_crashes_costs_no_other_answer(shared_desktop, kit):
    run = Run(shared_desktop, kit, program("facts", "passes:CrashingStandIn.*", "real"))
    assert [each["name"] for each in run.report["facts"]] == ["StandIn.passes"]
    assert run.report["facts"][0]["answer"] == "found"
    assert list(run.programs) == ["facts"]
    assert run.programs["facts"]["outcome"] == "CrashingStandIn: exit code 3, no results"
    assert "CrashingStandIn.crashes" in run.programs["facts"]["output"]
    assert run.report["totals"]["failed"] == 2  # and the recording


def test_every_suite_of_facts_has_a_time_limit_of_its_own(shared_desktop, kit):
    waiting = program("facts", "waits:HangingStandIn.*", "real", seconds=0)
    run = Run(shared_desktop, kit, waiting)
    outcome = run.programs["facts"]["outcome"]
    assert sorted(outcome.split("; ")) == [
        "HangingStandIn: its time was over, no results",
        "StandIn: its time was over, no results",
    ]
    assert run.report["facts"] == []


def test_facts_that_cannot_be_listed_are_a_failure(shared_desktop, kit):
    run = Run(shared_desktop, kit, program("facts", "passes", "real", file="absent.exe"))
    assert run.programs["facts"]["outcome"].startswith("cannot start absent.exe")


def test_a_program_without_results_is_a_failure_with_its_output(shared_desktop, kit):
    run = Run(
        *(shared_desktop, kit, program("early", "ends_early")),
        program("late", "waits_for_another_process", seconds=0),
        program("absent", "passes", file="absent.exe"),
    )
    outcomes = {name: each["outcome"] for name, each in run.programs.items()}
    assert outcomes["early"] == "no results"
    assert outcomes["late"] == "its time was over, no results"
    assert outcomes["absent"].startswith("cannot start absent.exe")
    assert "StandIn.ends_early" in run.programs["early"]["output"]
    assert run.report["totals"]["failed"] == 4  # and the recording
    assert run.ended.returncode == 1


def test_a_long_output_has_no_part_of_a_title(shared_desktop, kit):
    early = program("early", "ends_early_after_a_long_title", "real")
    output = Run(shared_desktop, kit, early).programs["early"]["output"]
    assert 'before "..." behind' in output
    assert "xx" not in output


def test_results_of_an_earlier_run_are_not_read(shared_desktop, kit):
    good = program("early", "passes")
    (kit / "tests/results").mkdir()
    shared = {"env": shared_desktop.environment, "cwd": kit / "tests/results"}
    run_program(
        *("wine", kit / "tests" / STAND_IN, *good["arguments"].split()),
        "--gtest_output=json:early.json",
        **shared,
    )
    assert (kit / "tests/results/early.json").exists()
    run = Run(shared_desktop, kit, program("early", "ends_early"))
    assert run.programs["early"]["outcome"] == "no results"


def test_a_command_that_cannot_be_started_is_a_failure(shared_desktop, kit):
    """An antivirus may take it away."""
    (kit / "bin/vorlen-monitor.exe").unlink()
    run = Run(shared_desktop, kit, program("good", "passes"))
    assert run.report["recording output"].startswith("cannot start vorlen-monitor.exe")
    assert run.report["totals"] == {"passed": 1, "failed": 1, "not measured": 0}


def test_a_recording_that_is_not_made_is_a_failure(shared_desktop, kit):
    run = Run(shared_desktop, kit, program("good", "passes"))
    assert run.report["recording"] is None
    assert run.ended.stdout.splitlines()[-2:] == [
        " 2/2 recording of the desktop: failed",
        "Failed: 1 passed, 1 failed, 0 not measured; the report is acceptance-report.json",
    ]
    assert run.ended.returncode == 1


def test_settings_of_the_user_do_not_reach_the_programs(shared_desktop, kit):
    run = Run(
        *(shared_desktop, kit, program("good", "sees_no_setting_of_the_user")),
        VORLEN_KIT_MODELS="ONE",
        GTEST_FILTER="-*",
    )
    assert [each["result"] for each in run.programs["good"]["tests"]] == ["passed"]


def complaint(ended) -> str:
    assert ended.returncode == 1
    [line] = ended.stderr.splitlines()
    assert line.startswith("acceptance: ")
    return line


def test_a_kit_that_was_not_unzipped_completely_is_refused(shared_desktop, kit):
    assert "unzip the whole kit" in complaint(start(shared_desktop, kit))


def test_a_folder_that_cannot_be_written_is_refused(shared_desktop, kit):
    (kit / "tests/results").touch()
    assert "unzip the kit into a folder of your own" in complaint(start(shared_desktop, kit))


def test_a_report_that_cannot_be_replaced_is_refused_at_once(shared_desktop, kit):
    (kit / "tests/programs.json").write_text('{"version": "1.2.3", "programs": []}')
    (kit / "acceptance-report.json").mkdir()
    (kit / "acceptance-report.json/file").touch()
    ended = start(shared_desktop, kit)
    assert "close the program that has it open" in complaint(ended)
    assert ended.stdout == ""


def test_the_script_without_the_other_files_says_what_to_do(shared_desktop, tmp_path):
    """As in an archive that was opened and not unzipped."""
    shutil.copy(PROJECT / "tests/acceptance/acceptance.cmd", tmp_path)
    ended = run_program(
        *("wine", "cmd", "/c", "acceptance.cmd"), env=shared_desktop.environment, cwd=tmp_path
    )
    assert ended.returncode == 1
    assert "unzip the whole archive" in ended.stdout


def test_a_folder_that_test_programs_cannot_name_is_refused(shared_desktop, tmp_path):
    kit = make_kit(tmp_path / "日本")
    assert "unzip the kit into another folder" in complaint(start(shared_desktop, kit))
