#!/usr/bin/python3
"""doxygen_filter.py HEADER: prints a header for hosts with its comments as Doxygen reads them.

The headers keep plain comments, with labelled lines below the description of a function:

    returns   the number of records
    thread    service thread
"""

import pathlib
import re
import sys

LABEL = re.compile(
    r"^(?P<names>[a-z]\w*(?:, [a-z]\w*)+(?=: |  )|[a-z]\w*(?=  ))(?:: | +)(?P<text>\S.*)$"
)
SECTIONS = {"thread": "Thread", "lifetime": "Lifetime", "errors": "Errors"}
BLOCK = re.compile(r"^/\*\n(?: \*.*\n)*? \*/\n", re.MULTILINE)
SINGLE_LINE = re.compile(r"^/\* (.*?) \*/$", re.MULTILINE)
TRAILING_BLOCK = re.compile(r"^(.*;\s*)/\* (.*?) \*/$", re.MULTILINE)
LINE = re.compile(r"^(\s*)// ?(.*)$", re.MULTILINE)
TRAILING_LINE = re.compile(r"^(\s*[^/\s].*?[;,{].*?)// (.*)$", re.MULTILINE)


def escaped(text):
    """A backslash begins a command."""
    return text.replace("\\", "\\\\")


def labelled(line):
    """The line, with Doxygen's commands in place of a label."""
    match = LABEL.match(line)
    if not match:
        return line.strip() if line.startswith("    ") else line
    commands = []
    for name in match["names"].split(", "):
        if name == "returns":
            commands.append("@return")
        elif name in SECTIONS:
            commands.append(f"@par {SECTIONS[name]}:\n")
        else:
            commands.append(f"@param {name}")
    return "\n".join(f"{command} {match['text']}" for command in commands)


def documented(match):
    """A comment that stands alone."""
    lines = [re.sub(r"^ \* ?", "", line) for line in match[0].splitlines()[1:-1]]
    return "/**\n" + "\n".join(labelled(escaped(line)) for line in lines) + "\n*/\n"


def main():
    source = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
    if source.startswith("//"):
        source = TRAILING_LINE.sub(lambda m: f"{m[1]}///< {escaped(m[2])}", source)
        source = LINE.sub(lambda m: f"{m[1]}/// {escaped(m[2])}", source)
        print("/// @file\n" + source, end="")
    else:
        source = BLOCK.sub(documented, source)
        source = SINGLE_LINE.sub(lambda m: f"/** {escaped(m[1])} */", source)
        source = TRAILING_BLOCK.sub(lambda m: f"{m[1]}/**< {escaped(m[2])} */", source)
        print(source.replace("/**\n", "/**\n@file\n", 1), end="")


main()
