"""Compares what each image needs with what the images that it links export, without linking them.

microsoft_images.py BUILD

BUILD is the folder of the preset microsoft-mode with all objects. There is neither Microsoft's C++
library nor its C library to link them with. Checked is therefore what the linker would check of this
project's names and of the system's:

- A C++ name that no object of an image defines is the standard library's, or an image that it links
  exports it.
- An imported C name is exported by an image that it links, or by a system library that it links.
- An image exports what its .def file and the tests name.
"""

import pathlib
import re
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
SYSTEM_LIBRARIES = pathlib.Path("/usr/x86_64-w64-mingw32/lib")
C_LIBRARIES = ("ucrtbase", "msvcrt")
DEFINITIONS = {
    "bin/libvorlen_monitor.dll": "monitor/libvorlen_monitor.def",
    "bin/vorlen_runtime.dll": "runtime/vorlen_runtime.def",
}
IMPORT = "__imp_"
# What belongs to Microsoft's C++ library and runtime.
STANDARD = re.compile(r"(const )?(std::|type_info::|operator (new|delete))")
# The options of llvm-undname for a name that begins with its scope.
BRIEF = ("access-specifier", "calling-convention", "member-type", "return-type", "variable-type")


def run(*command, text: str = "") -> str:
    return subprocess.run(
        command, input=text, check=True, capture_output=True, encoding="utf-8"
    ).stdout


def images_of(build_ninja: str) -> dict[str, dict[str, list[str]]]:
    """The products and the examples, with their objects, and the libraries that they link."""
    images = {}
    edges = re.findall(
        r"^build (bin/\S+\.(?:dll|exe))\b[^:]*: \S+_LINKER__\S+ ([^|\n]*).*\n((?:  .*\n)*)",
        build_ninja,
        re.MULTILINE,
    )
    for image, objects, variables in edges:
        [libraries] = re.findall(r"^  LINK_LIBRARIES = (.*)$", variables, re.MULTILINE)
        code = [each for each in objects.split() if each.endswith(".obj")]
        images[image] = {"objects": code, "libraries": libraries.split()}
    return images


def objects_of_libraries(build_ninja: str) -> dict[str, list[str]]:
    """The objects of each static library."""
    edges = re.findall(
        r"^build (lib/\S+\.lib): \S+_STATIC_LIBRARY_LINKER__\S+ ([^|\n]*)",
        build_ninja,
        re.MULTILINE,
    )
    return {library: objects.split() for library, objects in edges}


def symbols_of(build: pathlib.Path, objects: list[str]) -> tuple[set[str], set[str]]:
    """What the objects define, and what they refer to but do not define."""
    defined, undefined = set(), set()
    for line in run("llvm-nm-14", *(build / each for each in objects)).splitlines():
        match = re.match(r"[0-9a-f ]* (\w) (\S+)$", line)
        if match:
            (undefined if match[1] == "U" else defined).add(match[2])
    return defined, undefined - defined


def exports_of(build: pathlib.Path, objects: list[str]) -> set[str]:
    """What the objects ask the linker to export."""
    directives = run("llvm-readobj-14", "--coff-directives", *(build / each for each in objects))
    return set(re.findall(r'/EXPORT:"?([^\s",]+)', directives))


def system_names(libraries: list[str]) -> set[str]:
    names = set()
    for library in (*libraries, *C_LIBRARIES):
        file = SYSTEM_LIBRARIES / f"lib{library.removesuffix('.lib')}.a"
        if file.exists():
            names |= set(re.findall(r" [TID] (\S+)$", run("x86_64-w64-mingw32-nm", file), re.M))
    return names


def unsatisfied(undefined: set[str], exported: set[str], system: set[str]) -> list[str]:
    """The names that nothing would satisfy when the image is linked."""
    missing = []
    declared = readable((name.removeprefix(IMPORT) for name in undefined), *BRIEF)
    for name in sorted(undefined):
        plain = name.removeprefix(IMPORT)
        if plain in exported:
            continue
        if plain in declared:
            if not STANDARD.match(declared[plain]):
                missing.append(declared[plain])
        elif name.startswith(IMPORT) and name not in system:
            missing.append(plain)
    return missing


def readable(names, *left_out: str) -> dict[str, str]:
    """The C++ names as in sources, without the inline namespace of libc++."""
    mangled = sorted(name for name in names if name.startswith("?"))
    options = (f"--no-{each}" for each in left_out)
    # Each name is followed by its declaration and an empty line.
    text = run("llvm-undname-14", *options, text="".join(f"{name}\n" for name in mangled))
    declarations = (line.replace("std::__1::", "std::") for line in text.splitlines()[1::3])
    return dict(zip(mangled, declarations))


def names_in(definition: pathlib.Path) -> set[str]:
    text = definition.read_text(encoding="utf-8").partition("\nEXPORTS\n")[2]
    return set(re.findall(r"^(\w+)", text, re.MULTILINE))


def names_of_tests(build: pathlib.Path) -> set[str]:
    """The C++ names that tests look up in the products."""
    source = build / "mangled_names.cpp"
    source.write_text('#include "tests/fixtures/mangled_names.h"\n', encoding="utf-8")
    text = run("clang-14", "-E", "-P", "-D_MSC_VER", "-I", PROJECT, source)
    literals = re.findall(r'=((?:\s*"[^"]*")+);', text)
    return {"".join(re.findall(r'"([^"]*)"', each)) for each in literals}


def main() -> None:
    build = pathlib.Path(sys.argv[1])
    build_ninja = (build / "build.ninja").read_text(encoding="utf-8")
    images, libraries = images_of(build_ninja), objects_of_libraries(build_ninja)
    if not images.keys() >= DEFINITIONS.keys():
        sys.exit(f"{build} builds {', '.join(images)}; both libraries should be among them")
    exports = {image: exports_of(build, each["objects"]) for image, each in images.items()}
    failures = []
    for image, each in images.items():
        linked = [name for name in each["libraries"] if name in libraries]
        objects = each["objects"] + [one for name in linked for one in libraries[name]]
        exported = set()
        for other in images:
            if f"lib/{pathlib.Path(other).stem}.lib" in each["libraries"]:
                exported |= exports[other]
        _, undefined = symbols_of(build, objects)
        for name in unsatisfied(undefined, exported, system_names(each["libraries"])):
            failures.append(f"{image} needs {name}, which nothing that it links has")
    for image, definition in DEFINITIONS.items():
        for name in sorted(names_in(PROJECT / definition) - exports[image]):
            failures.append(f"{image} does not export {name}, which {definition} names")
    known = {each for image in DEFINITIONS for each in readable(exports[image]).values()}
    for name, declaration in readable(names_of_tests(build)).items():
        if declaration not in known:
            failures.append(f"no library exports {name}, which tests/fixtures/mangled_names.h has")
    if failures:
        sys.exit("\n".join(failures))


if __name__ == "__main__":
    main()
