import os
import subprocess
import time

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
def desktop(shared_desktops, request):
    """A desktop with its two outputs. The tests of a file share one, because opening it takes longer
    than most tests. They close what they start and may change the environment. A test gets another
    desktop after one that failed or changed the outputs, and when no test has used it for some time:
    Wine's own processes end 10 s after the last program."""
    if shared_desktops and time.monotonic() > shared_desktops[0].used_at + 5:
        shared_desktops.pop().close()
    if not shared_desktops:
        shared_desktops.append(Desktop())
    [opened] = shared_desktops
    environment = dict(opened.environment)
    failures = request.session.testsfailed
    yield opened
    opened.environment = environment
    opened.used_at = time.monotonic()
    if opened.outputs_changed or request.session.testsfailed > failures:
        shared_desktops.pop().close()


@pytest.fixture
def marked():
    """An environment without a display that marks all processes started with it."""
    environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
    return Marked(environment)


@pytest.fixture(scope="session")
def prepared():
    """Everything is installed and built, and Wine is prepared: later starts have nothing to say."""
    subprocess.run([RUN, "--virtual"], cwd=PROJECT, check=True, timeout=15 * TIMEOUT_S)
