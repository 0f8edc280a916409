"""The tests of the public headers on a machine without a native compiler."""

import shutil

from desktop import PROJECT
from processes import run_program

COMMANDS = (
    "cmake", "ninja", "x86_64-w64-mingw32-ar", "x86_64-w64-mingw32-g++-posix",
    "x86_64-w64-mingw32-gcc-posix", "x86_64-w64-mingw32-ranlib", "x86_64-w64-mingw32-windres",
)  # fmt: skip
CMAKELISTS = f"""cmake_minimum_required(VERSION 3.25)
project(headers LANGUAGES C CXX)
enable_testing()
add_subdirectory("{PROJECT}/tests/header" header)
"""


def test_are_not_configured_without_a_compiler(tmp_path):
    commands = tmp_path / "commands"
    commands.mkdir()
    for name in COMMANDS:
        (commands / name).symlink_to(shutil.which(name))
    (tmp_path / "include").symlink_to(PROJECT / "include")
    (tmp_path / "CMakeLists.txt").write_text(CMAKELISTS, encoding="utf-8")

    toolchain = PROJECT / "cmake" / "mingw-gcc.cmake"
    only_path = "-DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=OFF"  # nothing from /usr/bin
    command = ["cmake", "-G", "Ninja", "-B", "build", "--toolchain", toolchain, only_path]
    configured = run_program(*command, cwd=tmp_path, env={"PATH": str(commands)})
    assert configured.returncode != 0
    assert "There is no gcc for the tests of the headers" in configured.stderr
