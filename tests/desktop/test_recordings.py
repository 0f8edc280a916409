"""scripts/recordings: every command answers on every recording as it is written down."""

import json
import re
import shutil
import subprocess
from contextlib import closing

import pytest

from desktop import PROGRAMS, PROJECT, Desktop
from processes import TIMEOUT_S, complaint_of, run_program
from recordings import read_recording

SCRIPT = PROJECT / "scripts/recordings"
RECORDINGS = sorted((PROJECT / "tests/recordings").glob("*.json"))


@pytest.fixture(scope="module")
def shared_desktop():
    with closing(Desktop()) as opened:
        yield opened


def run_script(desktop, script, *arguments) -> subprocess.CompletedProcess:
    """It runs the command more than a hundred times."""
    return subprocess.run(
        [script, *arguments],
        env={**desktop.environment, "VORLEN_PRODUCTS": str(PROGRAMS)},
        stdin=subprocess.DEVNULL,
        capture_output=True,
        encoding="utf-8",
        timeout=5 * TIMEOUT_S,
        check=False,
    )


def test_every_command_answers_as_written_down(shared_desktop):
    done = run_script(shared_desktop, SCRIPT, "--check")
    assert (done.returncode, done.stderr) == (0, "")


def test_an_answer_that_differs_is_shown(shared_desktop, tmp_path):
    for folder in ("scripts", "tests/recordings"):
        (tmp_path / folder).mkdir(parents=True)
    shutil.copy(SCRIPT, tmp_path / "scripts")
    file = tmp_path / "tests/recordings" / RECORDINGS[0].name
    shutil.copy(RECORDINGS[0], file)
    answers = RECORDINGS[0].with_suffix(".txt").read_text(encoding="utf-8")
    file.with_suffix(".txt").write_text(answers.replace("[exit code 0]", "[exit code 9]", 1))
    program = tmp_path / "scripts" / SCRIPT.name
    done = run_script(shared_desktop, program, "--check")
    assert done.returncode == 1
    assert "-[exit code 9]\n+[exit code 0]\n" in done.stderr
    assert file.with_suffix(".txt").read_text(encoding="utf-8") != answers
    assert run_script(shared_desktop, program).returncode == 0
    assert file.with_suffix(".txt").read_text(encoding="utf-8") == answers


@pytest.mark.parametrize("recording", RECORDINGS, ids=lambda recording: recording.stem)
def test_a_recording_says_how_it_was_made(recording):
    origin = json.loads(recording.read_text(encoding="utf-8"))["origin"]
    assert origin.startswith(("written by hand", "vorlen-monitor "))


def test_every_finding_of_the_doctor_has_a_recording():
    table = (PROJECT / "tools/vorlen-monitor/doctor/findings.cpp").read_text(encoding="utf-8")
    codes = re.findall(r'^    \{"([a-z0-9-]+)", \w+\},$', table, re.MULTILINE)
    answers = "".join(file.with_suffix(".txt").read_text(encoding="utf-8") for file in RECORDINGS)
    shown = set(re.findall(r"^\d+\. \w+ ([a-z0-9-]+)$", answers, re.MULTILINE))
    assert codes and shown == set(codes)


@pytest.mark.parametrize("recording", RECORDINGS, ids=lambda recording: recording.stem)
def test_a_recording_of_a_replay_fits_the_schema_and_answers_alike(
    shared_desktop, recording, tmp_path
):
    def replay(file, *arguments) -> subprocess.CompletedProcess:
        done = shared_desktop.run("vorlen-monitor.exe", "--replay", str(file), *arguments)
        assert done.returncode in (0, 1) and done.stdout != ""
        return done

    assert read_recording(recording)["monitors"]
    copy, copy_of_copy = tmp_path / "copy.json", tmp_path / "copy of copy.json"
    assert replay(recording, "record", str(copy)).stderr == ""
    assert read_recording(copy)["windows"]
    replay(copy, "record", str(copy_of_copy))
    assert copy_of_copy.read_bytes() == copy.read_bytes()
    assert replay(copy, "doctor", "--json").stdout == replay(recording, "doctor", "--json").stdout


def test_without_a_desktop_it_names_the_command():
    refused = run_program(SCRIPT, env={"PATH": "/usr/bin:/bin"})
    assert complaint_of(refused).startswith("recordings: no desktop; this command gives one: ")
