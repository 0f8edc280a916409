import os
import subprocess

import pytest

from desktop import PROJECT, RUN, Desktop
from processes import Marked, TIMEOUT_S


@pytest.fixture(scope="module")
def shared_desktops():
    opened = []
    yield opened
    for each in opened:
        each.close()


@pytest.fixture
def desktop(shared_desktops):
    """A desktop with its two outputs. The tests of a file share one, because opening it takes longer
    than most tests. They close what they start and may change the environment; after one that changed
    the outputs, the next test gets another desktop."""
    if not shared_desktops:
        shared_desktops.append(Desktop())
    [opened] = shared_desktops
    environment = dict(opened.environment)
    yield opened
    opened.environment = environment
    if opened.outputs_changed:
        shared_desktops.remove(opened)
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
