"""scripts/lib/lint_database.py and lint_messages.py in a tree whose path has a space and an umlaut."""

import json
import shutil

import pytest

from desktop import PROJECT
from processes import run_program


@pytest.fixture
def tree(tmp_path):
    """Two sources with the same options, one with others, and an example."""
    root = tmp_path / "ein Gerät"
    scripts = root / "scripts" / "lib"
    scripts.mkdir(parents=True)
    for name in ("lint_database.py", "lint_messages.py"):
        shutil.copy(PROJECT / "scripts" / "lib" / name, scripts)
    commands = []
    for name, options in (
        ("platform/one.cpp", "-O2"),
        ("monitor/two.cpp", "-O2"),
        ("monitor/three.cpp", "-O2 -DOTHER"),
        ("examples/four.cpp", "-O2"),
    ):
        source = root / name
        source.parent.mkdir(exist_ok=True)
        source.write_text(f"#include <string>\nint {source.stem};\n")
        command = f'clang++ {options} -o {source.stem}.obj -c "{source}"'
        commands.append({"directory": str(root), "command": command, "file": str(source)})
    (root / "build").mkdir()
    (root / "commands.json").write_text(json.dumps(commands))
    return root


def run_script(tree, name, *arguments, **options):
    return run_program("/usr/bin/python3", tree / "scripts" / "lib" / name, *arguments, **options)


def make_database(tree, *sources):
    made = run_script(tree, "lint_database.py", tree / "commands.json", tree / "build", *sources)
    assert (made.returncode, made.stderr) == (0, "")
    checked = made.stdout.split("\0")[:-1]
    commands = json.loads((tree / "build" / "compile_commands.json").read_text())
    assert [command["file"] for command in commands] == checked
    return commands


def test_sources_with_the_same_options_are_merged(tree):
    first, *others = make_database(tree)
    assert first["arguments"] == ["clang++", "-O2", "-c", first["file"]]
    with open(first["file"], encoding="utf-8") as merged:
        assert merged.read().splitlines() == [
            f"// {tree}/platform/one.cpp",
            "#include <string>",
            "int one;",
            f"// {tree}/monitor/two.cpp",
            "",
            "int two;",
        ]
    assert [command["arguments"][1:-2] for command in others] == [["-O2", "-DOTHER"], ["-O2"]]


def test_a_named_source_is_checked_alone(tree):
    [command] = make_database(tree, tree / "monitor" / "two.cpp")
    assert command["file"] == f"{tree}/monitor/two.cpp"


def test_a_source_that_is_not_compiled_is_named(tree):
    (tree / "monitor" / "new.cpp").write_text("")
    made = run_script(tree, "lint_database.py", tree / "commands.json", tree / "build")
    assert made.returncode == 1
    assert made.stderr.startswith(f"{tree}/monitor/new.cpp is not compiled by the preset clang")


def test_a_message_names_the_place_in_the_source(tree):
    merged = make_database(tree)[0]["file"]
    messages = tree / "messages"
    messages.write_text(f"{merged}:6:5: error: text [rule]\n1234 warnings and 1 error generated.\n")
    with messages.open(encoding="utf-8") as printed:
        shown = run_script(tree, "lint_messages.py", stdin=printed)
    assert shown.stdout == f"{tree}/monitor/two.cpp:2:5: error: text [rule]\n"
