"""scripts/build with a stand-in for CMake."""

import os
import shutil

from desktop import PROJECT
from processes import run_program

VARIABLES = ("CPATH", "C_INCLUDE_PATH", "CPLUS_INCLUDE_PATH", "LIBRARY_PATH")


def test_compilers_take_no_folders_from_the_environment(tmp_path):
    root = tmp_path / "ein Gerät"
    shutil.copytree(PROJECT / "scripts" / "lib", root / "scripts" / "lib")
    shutil.copy(PROJECT / "scripts" / "build", root / "scripts")
    programs = tmp_path / "programs"
    programs.mkdir()
    cmake = programs / "cmake"
    cmake.write_text("#!/bin/sh\nenv >>../environment\n")
    cmake.chmod(0o755)
    folders = {name: f"/folder/of/{name}" for name in VARIABLES}
    environment = {**os.environ, **folders, "PATH": f"{programs}:{os.environ['PATH']}"}
    built = run_program(root / "scripts" / "build", "clang", env=environment)
    assert built.returncode == 0, built.stderr
    seen = (tmp_path / "environment").read_text()
    assert "CCACHE_DIR=" in seen
    assert "/folder/of/" not in seen
