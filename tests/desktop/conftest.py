import os
import subprocess

import pytest

from desktop import PROJECT, RUN, Desktop
from processes import Marked, TIMEOUT_S


@pytest.fixture
def desktop():
    """A desktop of the test's own."""
    opened = Desktop()
    yield opened
    opened.close()


@pytest.fixture
def marked():
    """An environment without a display that marks all processes started with it."""
    environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
    return Marked(environment)


@pytest.fixture(scope="session")
def prepared():
    """Everything is installed and built, and Wine is prepared: later starts have nothing to say."""
    subprocess.run([RUN, "--virtual"], cwd=PROJECT, check=True, timeout=15 * TIMEOUT_S)
