"""./bench as its user meets it. What it measures is for people: only what is counted is tested."""

import json
import subprocess

import pytest

from desktop import PROJECT, TIMEOUT_S


def bench(*arguments) -> subprocess.CompletedProcess:
    return subprocess.run(
        [PROJECT / "bench", *arguments],
        stdin=subprocess.DEVNULL,
        capture_output=True,
        encoding="utf-8",
        timeout=TIMEOUT_S,
    )


@pytest.mark.usefixtures("prepared")
def test_it_shows_progress_prints_a_table_and_writes_what_it_measured(tmp_path):
    file = tmp_path / "results.json"
    measured = bench("--quick", "--json", file)
    assert measured.returncode == 0, measured.stderr
    assert "[8/8]" in measured.stderr
    results = json.loads(file.read_text(encoding="utf-8"))
    assert "processors" in results["machine"]
    assert len(results["rows"]) == len(measured.stdout.splitlines()) - 1
    for row in results["rows"]:
        assert row["what"] in measured.stdout
        assert row["value"] >= 0
        if row["unit"] in ("allocations", "platform calls", "bytes"):
            assert row.get("met", True), row


@pytest.mark.parametrize(
    ("arguments", "complaint"),
    [
        (["--json"], "--json needs the name of a file"),
        (["--json", ""], "--json needs the name of a file"),
        (["--json", "no/such/folder/file"], "cannot write no/such/folder/file"),
        (["--json", "."], "cannot write ."),
        (["--json", "/tmp/a", "--json", "/tmp/b"], "--json can be given once only"),
        (["--slow"], "unknown argument --slow"),
        (["results.json"], "unknown argument results.json"),
    ],
)
def test_a_wrong_argument_is_told_in_one_line(arguments, complaint):
    refused = bench(*arguments)
    assert refused.returncode == 1
    assert refused.stdout == ""
    assert refused.stderr.startswith(f"bench: {complaint}")
    assert len(refused.stderr.splitlines()) == 1
