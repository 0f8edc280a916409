"""Writes the compile commands for the linter, and prints the sources that it has to check.

lint_database.py COMPILE_COMMANDS OUTPUT [SOURCE...]

COMPILE_COMMANDS is the file that CMake wrote. It also contains sources of libraries, and contains a
source once for each target that compiles it, so that the linter would check it several times.
OUTPUT gets the first command of each source of this project. Standard output gets the named
sources, or all sources, each ended by a zero byte.

CMake may have merged the sources of a target: into one that includes them. The linter looks closely
only at what a source itself contains, so that such a source gets the text of the others here, each
after a line with its name (lint_messages.py).
"""

import json
import pathlib
import re
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BUILD = PROJECT / "build"
# Left out: tests and benchmark, because checking the expanded macros of GoogleTest takes longer than
# everything else.
LEFT_OUT = (PROJECT / "tests", PROJECT / "benchmark")


def is_own(source: pathlib.Path) -> bool:
    return (
        source.suffix in (".c", ".cpp")
        and PROJECT in source.parents
        and BUILD not in source.parents
    )


def merge(compiled: pathlib.Path) -> list[pathlib.Path]:
    """The sources that CMake has merged into one, after their texts were put into it. A header that
    an earlier source includes is not included again: the linter refuses that."""
    names = re.findall(r'#include "(.+)"', compiled.read_text("utf-8"))
    included: set[str] = set()
    with compiled.open("w", encoding="utf-8") as merged:
        for name in names:
            earlier = set(included)
            merged.write(f"// {name}\n")
            for line in pathlib.Path(name).read_text("utf-8").splitlines():
                if line.startswith("#include "):
                    included.add(line)
                    if line in earlier:
                        earlier.remove(line)
                        line = ""
                merged.write(f"{line}\n")
    return [pathlib.Path(name) for name in names]


def sources_in(compiled: pathlib.Path) -> list[pathlib.Path]:
    return merge(compiled) if compiled.name.startswith("unity_") else [compiled]


def own_commands(compile_commands: pathlib.Path) -> list[tuple[dict, set[pathlib.Path]]]:
    """Each command that compiles sources of this project, with those that no earlier one compiles."""
    commands: list[tuple[dict, set[pathlib.Path]]] = []
    known: set[pathlib.Path] = set()
    for command in json.loads(compile_commands.read_text(encoding="utf-8")):
        sources = set(filter(is_own, sources_in(pathlib.Path(command["file"])))) - known
        if sources:
            commands.append((command, sources))
            known |= sources
    return commands


def sources_of_project() -> set[pathlib.Path]:
    return {
        source
        for folder in PROJECT.iterdir()
        if folder.is_dir() and folder not in (BUILD, *LEFT_OUT) and not folder.name.startswith(".")
        for suffix in ("c", "cpp")
        for source in folder.rglob(f"*.{suffix}")
    }


def main() -> None:
    compile_commands, output, *named = map(pathlib.Path, sys.argv[1:])
    commands = own_commands(compile_commands)
    unknown = sorted(set(named or sources_of_project()).difference(*(each[1] for each in commands)))
    if unknown:
        sys.exit(
            f"{unknown[0]} is not compiled by the preset clang, so that it cannot be checked: "
            "name a .c or .cpp file, and add a new one to its CMakeLists.txt"
        )
    # The command with the most sources first: it takes longest.
    commands.sort(key=lambda each: len(each[1]), reverse=True)
    output.write_text(json.dumps([command for command, _ in commands], indent=1), "utf-8")
    checked = named or [command["file"] for command, _ in commands]
    sys.stdout.write("".join(f"{source}\0" for source in checked))


main()
