"""The workflows in .github/workflows: they can be read, and name what exists in this tree."""

import json
import os
import re

import pytest
import yaml

from desktop import PROJECT

WORKFLOWS = sorted((PROJECT / ".github" / "workflows").iterdir())
PRESETS = json.loads((PROJECT / "CMakePresets.json").read_text(encoding="utf-8"))


def steps_of(workflow) -> list[dict]:
    read = yaml.safe_load(workflow.read_text(encoding="utf-8"))
    return [step for job in read["jobs"].values() for step in job["steps"]]


def commands_of(workflow) -> str:
    return "\n".join(step.get("run", "") for step in steps_of(workflow))


def names_of_workflows() -> set[str]:
    return {yaml.safe_load(each.read_text(encoding="utf-8"))["name"] for each in WORKFLOWS}


def test_there_is_one_for_each_system():
    assert names_of_workflows() == {"Debian", "Windows"}


@pytest.mark.parametrize("workflow", WORKFLOWS, ids=lambda path: path.stem)
def test_each_step_runs_one_command_or_one_action(workflow):
    for step in steps_of(workflow):
        assert ("run" in step) != ("uses" in step), step


def test_debian_runs_scripts_that_exist():
    [debian] = [each for each in WORKFLOWS if each.stem == "debian"]
    scripts = re.findall(r"(?:^|\s)(\./[\w/-]+|\.ci/[\w/-]+)", commands_of(debian))
    assert scripts == [".ci/run", "./package"]
    for script in scripts:
        assert os.access(PROJECT / script, os.X_OK), script


def test_windows_uses_presets_that_exist():
    [windows] = [each for each in WORKFLOWS if each.stem == "windows"]
    used = re.findall(r"^(cmake|cmake --build|ctest) --preset (\S+)", commands_of(windows), re.M)
    assert {command for command, _ in used} == {"cmake", "cmake --build", "ctest"}
    kinds = {"cmake": "configure", "cmake --build": "build", "ctest": "test"}
    for command, preset in used:
        assert preset in {each["name"] for each in PRESETS[f"{kinds[command]}Presets"]}


def test_windows_runs_no_quoted_program_in_for():
    """The command interpreter removes the quotes of a path with parentheses there."""
    [windows] = [each for each in WORKFLOWS if each.stem == "windows"]
    loops = re.findall(r"^for /f .*", commands_of(windows), re.M)
    assert loops
    assert all(re.search(r" in \('\w", loop) for loop in loops)


def test_windows_follows_a_workflow_that_exists():
    """The key "on" is read as true by YAML 1.1."""
    [windows] = [each for each in WORKFLOWS if each.stem == "windows"]
    triggers = yaml.safe_load(windows.read_text(encoding="utf-8"))[True]
    assert set(triggers["workflow_run"]["workflows"]) <= names_of_workflows()


def test_windows_gets_the_artefact_that_debian_keeps():
    by_stem = {each.stem: steps_of(each) for each in WORKFLOWS}

    def names(stem, action):
        return {
            step["with"]["name"]
            for step in by_stem[stem]
            if step.get("uses", "").startswith(f"actions/{action}@")
        }

    assert names("windows", "download-artifact") == names("debian", "upload-artifact")
