"""Writes the compile commands for the linter, and prints the sources that it has to check.

lint_database.py COMPILE_COMMANDS OUTPUT [SOURCE...]

COMPILE_COMMANDS is the file that CMake wrote. It also contains sources of libraries, and contains a
source once for each target that compiles it, so that the linter would check it several times.
OUTPUT gets the first command of each source of this project. Standard output gets the named
sources, or all sources, each ended by a zero byte.
"""

import json
import pathlib
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BUILD = PROJECT / "build"
# Left out: tests and benchmark, because checking the expanded macros of GoogleTest takes longer than
# everything else.
LEFT_OUT = (PROJECT / "tests", PROJECT / "benchmark")


def is_own(source: pathlib.Path) -> bool:
    return PROJECT in source.parents and BUILD not in source.parents


def own_commands(compile_commands: pathlib.Path) -> dict[pathlib.Path, dict]:
    commands: dict[pathlib.Path, dict] = {}
    for command in json.loads(compile_commands.read_text(encoding="utf-8")):
        source = pathlib.Path(command["file"])
        if is_own(source):
            commands.setdefault(source, command)
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
    wanted = set(named) or sources_of_project()
    unknown = sorted(wanted - commands.keys())
    if unknown:
        sys.exit(
            f"{unknown[0]} is not compiled by the preset clang, so that it cannot be checked: "
            "name a .c or .cpp file, and add a new one to its CMakeLists.txt"
        )
    output.write_text(json.dumps(list(commands.values()), indent=1), encoding="utf-8")
    sys.stdout.write("".join(f"{source}\0" for source in sorted(wanted)))


main()
