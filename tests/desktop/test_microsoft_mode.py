"""The preset msvc as scripts/microsoft-mode tries it: what its configuration refuses and sets."""

import fnmatch
import importlib.util
import json
import re
import subprocess

import pytest

from desktop import PROJECT, TIMEOUT_S

NATIVE = f"-DCMAKE_PROJECT_INCLUDE={PROJECT}/cmake/microsoft-mode/native.cmake"
NO_PACKAGES = [f"-DCMAKE_DISABLE_FIND_PACKAGE_{name}=ON" for name in ("CLI11", "nlohmann_json")]


def configure(folder, *options) -> subprocess.CompletedProcess:
    return subprocess.run(
        ["cmake", "--preset", "microsoft-mode", "-B", folder, *options],
        cwd=PROJECT,
        stdin=subprocess.DEVNULL,
        capture_output=True,
        encoding="utf-8",
        timeout=5 * TIMEOUT_S,
    )


def message_of(configured) -> str:
    """The error of a configuration that failed, on one line."""
    assert configured.returncode != 0
    return " ".join(configured.stderr.split())


@pytest.fixture(scope="module")
def libraries(tmp_path_factory):
    """The libraries alone, configured as on a system without packages."""
    folder = tmp_path_factory.mktemp("libraries")
    configured = configure(folder, NATIVE, "-DVORLEN_LIBRARIES_ONLY=ON", *NO_PACKAGES)
    assert configured.returncode == 0, configured.stderr
    return folder


@pytest.fixture(scope="module")
def images():
    """The script that compares the images."""
    path = PROJECT / "scripts" / "lib" / "microsoft_images.py"
    spec = importlib.util.spec_from_file_location("microsoft_images", path)
    script = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(script)
    return script


@pytest.mark.parametrize(
    "option",
    [
        "-DCMAKE_MSVC_RUNTIME_LIBRARY=MultiThreaded",
        "-DCMAKE_MSVC_RUNTIME_LIBRARY=MultiThreadedDebugDLL",
        "-DCMAKE_CXX_FLAGS=/EHsc /MT",
        "-DCMAKE_C_FLAGS_RELEASE=-MDd",
    ],
)
def test_another_runtime_is_refused_with_the_reason(tmp_path, option):
    message = message_of(configure(tmp_path, option))
    assert "must share one C++ runtime and one heap" in message
    assert "vc_redist.x64.exe" in message
    name, value = option.removeprefix("-D").split("=")
    assert f"{name} " in message
    assert value.split()[-1].lstrip("/-") in message


def test_a_32_bit_compiler_is_refused(tmp_path):
    message = message_of(configure(tmp_path, "-DCMAKE_C_FLAGS=-m32", "-DCMAKE_CXX_FLAGS=-m32"))
    assert '"x64 Native Tools Command Prompt"' in message


def test_the_command_needs_its_packages(tmp_path):
    assert "CLI11" in message_of(configure(tmp_path, NATIVE, *NO_PACKAGES))


def test_the_libraries_need_no_package(libraries):
    build = (libraries / "build.ninja").read_text(encoding="utf-8")
    assert "build bin/libvorlen_monitor.dll" in build
    assert "vorlen-monitor.exe" not in build


def test_c_functions_may_throw(libraries):
    commands = json.loads((libraries / "compile_commands.json").read_text(encoding="utf-8"))
    of_module = [each["command"] for each in commands if f"{PROJECT}/monitor/" in each["file"]]
    assert of_module
    for command in of_module:
        options = command.split()
        assert "/EHsc" not in options
        assert options.index("/EHs") < options.index("/EHc-")
        assert "-MD" in options


def test_images_are_linked_without_what_nothing_calls(libraries):
    build = (libraries / "build.ninja").read_text(encoding="utf-8")
    images = re.findall(r"^build bin/.*\n(?:  .*\n)*?  LINK_FLAGS = (.*)$", build, re.MULTILINE)
    assert len(images) == 5, "both libraries and three examples"
    for flags in images:
        assert "/OPT:REF,ICF" in flags
        assert "/PDBALTPATH:%_PDB%" in flags


def test_a_function_that_no_image_exports_is_found(images):
    text = "V?$basic_string@DU?$char_traits@D@__1@std@@V?$allocator@D@23@@__1@std@@"
    cpp, c = f"?SetName@Core@vorlen@@QEAAXAEB{text}@Z", "Vorlen_RegisterModuleInit"
    needed = {f"__imp_{cpp}", f"__imp_{c}"}
    assert images.unsatisfied(needed, {cpp, c}, set()) == []
    missing = images.unsatisfied(needed, set(), set())
    assert missing[0].startswith("vorlen::Core::SetName(class std::basic_string<char,")
    assert missing[1:] == [c]


def test_what_a_system_library_lacks_is_found(images):
    needed = {"__imp_EnumWindows", "__imp_DwmGetWindowAttribute", "memcpy"}
    assert images.unsatisfied(needed, set(), {"__imp_EnumWindows"}) == ["DwmGetWindowAttribute"]


def test_the_standard_library_is_not_looked_for(images):
    needed = {"?_Xlength_error@std@@YAXPEBD@Z", "??2@YAPEAX_K@Z", "??8type_info@@QEBA_NAEBV0@@Z"}
    assert images.unsatisfied(needed, set(), set()) == []


def test_each_mark_of_the_tests_matches_a_test():
    """GNU in the files CMakeLists.txt: what is left out with Microsoft's compiler."""
    folder = PROJECT / "tests"
    tests = {
        f"{fixture}.{name}"
        for file in folder.rglob("*_test.cpp")
        for fixture, name in re.findall(
            r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", file.read_text(encoding="utf-8"), re.MULTILINE
        )
    }
    marks = " ".join(
        marked
        for file in folder.rglob("CMakeLists.txt")
        for marked in re.findall(r"\bGNU\s([^)]*)\)", file.read_text(encoding="utf-8"))
    ).split()
    assert len(marks) > 5
    for mark in marks:
        assert fnmatch.filter(tests, mark), mark
