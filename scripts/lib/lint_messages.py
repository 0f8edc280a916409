"""Passes on the messages of the linter. A place in a merged source (lint_database.py) becomes the
place in the source of this project.
"""

import functools
import pathlib
import re
import sys

PLACE = re.compile(r"(?P<merged>/.*?/merged_\d+\.\w+):(?P<line>\d+):")
COUNT = re.compile(r"\d+ warnings?( and \d+ errors?)? generated\.")


@functools.cache
def lines_of(merged: str) -> list[str]:
    return pathlib.Path(merged).read_text("utf-8").splitlines()


def original(place: re.Match) -> str:
    line = int(place["line"])
    for start, text in reversed(list(enumerate(lines_of(place["merged"])[:line], start=1))):
        if text.startswith("// /"):
            return f"{text[3:]}:{line - start}:"
    return place[0]


for message in sys.stdin:
    if not COUNT.fullmatch(message.strip()):
        sys.stdout.write(PLACE.sub(original, message))
        sys.stdout.flush()
