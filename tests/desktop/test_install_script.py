"""scripts/install, on a machine that is made of fake commands: nothing is installed here."""

import pathlib
import shutil
import subprocess

import pytest

from desktop import PROJECT
from processes import run_program

INSTALL = PROJECT / "scripts/install"
REAL_COMMANDS = ("bash", "env", "flock", "grep", "mktemp", "readlink", "rm", "tail")

# Knows the packages of the file "installed", like dpkg-query.
DPKG_QUERY = """#!/bin/bash
for package in "${@:4}"; do
    grep --quiet --line-regexp "$package" "$MACHINE/installed" && echo "$package installed"
done
exit 1
"""
APT_GET = """#!/bin/bash
echo "$* ($DEBIAN_FRONTEND)" >>"$MACHINE/calls"
echo "output of apt"
exit "$(<"$MACHINE/apt_exit_code")"
"""
SUDO = """#!/bin/bash
echo -n "sudo " >>"$MACHINE/calls"
exec "$@"
"""


class Machine:
    def __init__(self, folder: pathlib.Path):
        self._folder = folder
        self._commands = folder / "commands"
        self._commands.mkdir()
        for name in REAL_COMMANDS:
            (self._commands / name).symlink_to(shutil.which(name))
        self.command("dpkg-query", DPKG_QUERY)
        self.command("apt-get", APT_GET)
        self.user(0)
        self.installed("nothing")
        self.apt_exit_code(0)

    def command(self, name: str, text: str) -> None:
        (self._commands / name).write_text(text)
        (self._commands / name).chmod(0o755)

    def without_command(self, name: str) -> None:
        (self._commands / name).unlink()

    def user(self, number: int) -> None:
        self.command("id", f"#!/bin/bash\necho {number}\n")

    def installed(self, *packages: str) -> None:
        (self._folder / "installed").write_text("\n".join(packages) + "\n")

    def apt_exit_code(self, code: int) -> None:
        (self._folder / "apt_exit_code").write_text(str(code))

    def calls(self) -> list[str]:
        """The calls of apt-get, in order."""
        file = self._folder / "calls"
        return file.read_text().splitlines() if file.exists() else []

    def install(self, purpose: str) -> subprocess.CompletedProcess:
        environment = {"PATH": str(self._commands), "MACHINE": str(self._folder)}
        return run_program(INSTALL, purpose, env=environment)


def listed(*purposes: str) -> list[str]:
    lines = (PROJECT / "scripts/packages").read_text().splitlines()
    words = [line.split() for line in lines if line]
    return [word[1] for word in words if word[0] in purposes]


@pytest.fixture
def machine(tmp_path):
    return Machine(tmp_path)


def test_with_everything_installed_it_does_nothing(machine):
    machine.installed(*listed("run", "package", "check"))
    done = machine.install("check")
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")
    assert machine.calls() == []


def test_root_installs_what_is_missing(machine):
    machine.installed(*(package for package in listed("run") if package not in ("cmake", "wine")))
    done = machine.install("run")
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "Installing cmake wine\n")
    option = "--option DPkg::Lock::Timeout=300"
    assert machine.calls() == [
        f"{option} update (noninteractive)",
        f"{option} install --yes --no-install-recommends cmake wine (noninteractive)",
    ]


def test_the_check_needs_more_than_the_run(machine):
    machine.installed(*listed("run"))
    assert machine.install("run").stderr == ""
    assert machine.install("check").stderr == (
        f"Installing {' '.join(listed('package', 'check'))}\n"
    )


def test_a_release_needs_packages_of_its_own(machine):
    assert "debootstrap" in listed("release")
    assert machine.install("release").stderr == f"Installing {' '.join(listed('release'))}\n"


def test_a_user_installs_through_sudo(machine):
    machine.user(1000)
    machine.command("sudo", SUDO)
    assert machine.install("run").returncode == 0
    assert len(machine.calls()) == 2
    assert all(call.startswith("sudo ") for call in machine.calls())


def test_without_sudo_it_names_the_command_for_root(machine):
    machine.user(1000)
    machine.installed(*(package for package in listed("run") if package != "cmake"))
    refused = machine.install("run")
    assert refused.returncode == 1
    assert refused.stderr == (
        "install: packages are missing; run as root: apt-get update && "
        "apt-get install --yes --no-install-recommends cmake\n"
    )
    assert machine.calls() == []


def test_npm_of_another_package_counts_as_installed(machine):
    everything = listed("run", "package", "check")
    machine.installed(*(package for package in everything if package != "npm"))
    assert machine.install("check").stderr == "Installing npm\n"
    machine.command("npm", "#!/bin/bash\n")
    assert machine.install("check").stderr == ""


def test_another_system_than_debian_is_refused(machine):
    machine.without_command("apt-get")
    refused = machine.install("run")
    assert refused.returncode == 1
    assert refused.stderr == "install: this needs Debian 12: there is no apt-get to install with\n"


def test_a_failure_of_apt_shows_what_it_said_last(machine):
    machine.apt_exit_code(100)
    failed = machine.install("run")
    assert failed.returncode == 1
    assert "output of apt\n" in failed.stderr
    assert failed.stderr.splitlines()[-1] == (
        "install: this failed (see its last messages above): env "
        "DEBIAN_FRONTEND=noninteractive apt-get --option DPkg::Lock::Timeout=300 update"
    )


def test_an_unknown_purpose_is_refused(machine):
    refused = machine.install("else")
    assert refused.returncode == 1
    assert (
        refused.stderr
        == "install: say what to install for: scripts/install run|package|check|release\n"
    )
