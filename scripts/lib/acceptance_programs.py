"""acceptance_programs.py VERSION FOLDER: prints the list of test programs for the acceptance kit.

Standard input is what `ctest --show-only=json-v1` prints. The kit takes every program of both tiers in
FOLDER or below it, as CTest runs it.
"""

import json
import pathlib
import sys

TIERS = ("simulated", "real")


def properties_of(test):
    return {each["name"]: each["value"] for each in test.get("properties", [])}


def program_of(test, folder):
    """What the kit has to know of a test of CTest, or nothing if it is no program of a tier."""
    properties = properties_of(test)
    tiers = [tier for tier in TIERS if tier in properties.get("LABELS", [])]
    files = [word for word in test["command"] if word.endswith("_tests.exe")]
    if not tiers or not files:
        return None
    [tier], [file] = tiers, files
    return {
        "name": test["name"],
        "file": pathlib.Path(file).relative_to(folder).as_posix().replace("/", "\\"),
        "arguments": " ".join(test["command"][test["command"].index(file) + 1 :]),
        "tier": tier,
        "seconds": int(properties["TIMEOUT"]),
    }


def main():
    version, folder = sys.argv[1:]
    tests = json.load(sys.stdin)["tests"]
    programs = [program for test in tests if (program := program_of(test, folder))]
    assert [each["name"] for each in programs].count("facts") == 1, "the facts are missing"
    print(json.dumps({"version": version, "programs": programs}, indent=2))


main()
