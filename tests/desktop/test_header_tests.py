"""The tests of the public headers on a machine without a native compiler."""

import pathlib
import shutil
import subprocess

import pytest

from desktop import PROJECT

COMMANDS = (
    "cmake", "ctest", "ninja", "x86_64-w64-mingw32-ar", "x86_64-w64-mingw32-g++-posix",
    "x86_64-w64-mingw32-gcc-posix", "x86_64-w64-mingw32-ranlib", "x86_64-w64-mingw32-windres",
)  # fmt: skip
CMAKELISTS = f"""cmake_minimum_required(VERSION 3.25)
project(headers LANGUAGES C CXX)
enable_testing()
add_subdirectory("{PROJECT}/tests/header" header)
"""


@pytest.fixture
def ctest(tmp_path):
    commands = tmp_path / "commands"
    commands.mkdir()
    for name in COMMANDS:
        (commands / name).symlink_to(shutil.which(name))
    (tmp_path / "include").symlink_to(PROJECT / "include")
    (tmp_path / "CMakeLists.txt").write_text(CMAKELISTS, encoding="utf-8")

    def run(program: str, *arguments: str | pathlib.Path) -> subprocess.CompletedProcess:
        return subprocess.run(
            [program, *arguments],
            cwd=tmp_path,
            env={"PATH": str(commands)},
            stdin=subprocess.DEVNULL,
            capture_output=True,
            encoding="utf-8",
        )

    toolchain = PROJECT / "cmake" / "mingw-gcc.cmake"
    only_path = "-DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=OFF"  # nothing from /usr/bin
    configured = run("cmake", "-G", "Ninja", "-B", "build", "--toolchain", toolchain, only_path)
    assert configured.returncode == 0, configured.stderr
    return lambda *arguments: run("ctest", "--test-dir", "build", *arguments)


def test_they_are_there_and_fail(ctest):
    listed = ctest("-N").stdout
    assert listed.count("_on_this_system") == 5
    assert listed.count("_refuses_another_layout") == 2
    failed = ctest()
    assert failed.returncode != 0
    assert "7 tests failed out of 7" in failed.stdout
    assert "Could not find executable gcc" in failed.stdout + failed.stderr
