"""Writes the compile commands for the linter, and prints the sources that it has to check.

lint_database.py COMPILE_COMMANDS FOLDER [SOURCE...]

COMPILE_COMMANDS is the file that CMake wrote. It also contains sources of libraries, and contains a
source once for each target that compiles it, so that the linter would check it several times.
FOLDER gets compile_commands.json, for the named sources. Without names, it is for all sources of this
project, and those that are compiled with the same options are merged into one: most of the time, the
linter goes through the headers of the system. It looks closely only at what a source itself contains,
so that the merged source gets the text of the others, each after a line with its name
(lint_messages.py). Standard output gets the sources to check, each ended by a zero byte.
"""

import collections
import json
import pathlib
import shlex
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BUILD = PROJECT / "build"
# Left out: tests and benchmark, because checking the expanded macros of GoogleTest takes longer than
# everything else.
LEFT_OUT = (PROJECT / "tests", PROJECT / "benchmark")
# Each is a program.
EXAMPLES = PROJECT / "examples"


def is_own(source: pathlib.Path) -> bool:
    return (
        source.suffix in (".c", ".cpp")
        and PROJECT in source.parents
        and BUILD not in source.parents
    )


def own_commands(compile_commands: pathlib.Path) -> dict[pathlib.Path, dict]:
    """The first command of each source of this project."""
    commands: dict[pathlib.Path, dict] = {}
    for command in json.loads(compile_commands.read_text("utf-8")):
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


def options_of(command: dict) -> tuple[str, ...]:
    """The command without its end: -o OBJECT -c SOURCE."""
    return tuple(shlex.split(command["command"])[:-4])


def merge(sources: list[pathlib.Path], merged: pathlib.Path) -> None:
    """A header that an earlier source includes is not included again: the linter refuses that."""
    included: set[str] = set()
    with merged.open("w", encoding="utf-8") as output:
        for source in sources:
            earlier = set(included)
            output.write(f"// {source}\n")
            for line in source.read_text("utf-8").splitlines():
                if line.startswith("#include "):
                    included.add(line)
                    if line in earlier:
                        earlier.remove(line)
                        line = ""
                output.write(f"{line}\n")


def merged_commands(commands: dict[pathlib.Path, dict], folder: pathlib.Path) -> list[dict]:
    """The sources in groups of the same options; the group with the most sources, which takes
    longest, first."""
    groups = collections.defaultdict(list)
    for source, command in commands.items():
        program = source if source.parent == EXAMPLES else None
        groups[options_of(command), source.suffix, program].append(source)
    merged = []
    for (options, suffix, _), sources in sorted(groups.items(), key=lambda each: -len(each[1])):
        file = folder / f"merged_{len(merged)}{suffix}"
        merge(sources, file)
        merged.append(
            {
                "directory": commands[sources[0]]["directory"],
                "arguments": [*options, "-c", str(file)],
                "file": str(file),
            }
        )
    return merged


def main() -> None:
    compile_commands, folder, *named = (pathlib.Path(each).resolve() for each in sys.argv[1:])
    commands = own_commands(compile_commands)
    unknown = sorted(set(named or sources_of_project()).difference(commands))
    if unknown:
        sys.exit(
            f"{unknown[0]} is not compiled by the preset clang, so that it cannot be checked: "
            "name a .c or .cpp file, and add a new one to its CMakeLists.txt"
        )
    if named:
        checked = [commands[source] for source in named]
    else:
        checked = merged_commands(commands, folder)
    (folder / "compile_commands.json").write_text(json.dumps(checked, indent=1), "utf-8")
    sys.stdout.write("".join(f"{command['file']}\0" for command in checked))


main()
