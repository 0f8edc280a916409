"""./bench as its user meets it. What it measures is for people: only what is counted is tested."""

import json

import pytest

from desktop import PROJECT
from processes import complaint_of, run_program


def bench(*arguments):
    return run_program(PROJECT / "bench", *arguments)


@pytest.mark.usefixtures("prepared")
def test_it_prints_a_table_and_writes_what_it_measured(tmp_path):
    file = tmp_path / "results.json"
    measured = bench("--quick", "--json", file)
    assert measured.returncode == 0, measured.stderr
    assert "Process 2 of 2" in measured.stderr and "[7/7]" in measured.stderr
    results = json.loads(file.read_text(encoding="utf-8"))
    assert "processors" in results["machine"]
    assert sum(regime["processes"] for regime in results["regimes"]) == results["processes"] == 2
    shown = measured.stdout.splitlines()[1:]
    for row, line in zip(results["rows"], shown, strict=True):
        assert line.startswith(row["what"])
        assert row["lowest"] <= row["value"] <= row["highest"]
        if not row["unit"].startswith("x "):
            assert not line.endswith("MISSED"), line
    library = PROJECT / "build/clang/bin/libvorlen_monitor.dll"
    assert sum(results["parts"].values()) == library.stat().st_size
    assert min(results["parts"].values()) > 0, results["parts"]


@pytest.mark.parametrize(
    ("arguments", "complaint"),
    [
        (["--json"], "--json needs the name of a file"),
        (["--json", "no/such/folder/file"], "cannot write no/such/folder/file"),
        (["--json", "/tmp/a", "--json", "/tmp/b"], "--json can be given once only"),
        (["--slow"], "unknown argument --slow"),
        (["results.json"], "unknown argument results.json"),
    ],
)
def test_a_wrong_argument_is_refused_in_one_line(arguments, complaint):
    assert complaint_of(bench(*arguments)).startswith(f"bench: {complaint}")
