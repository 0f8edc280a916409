"""scripts/ledger in a tree of its own."""

import json
import shutil

import pytest

from desktop import PROJECT
from processes import complaint_of, run_program

SCRIPT = PROJECT / "scripts" / "ledger"
MARK = "<!-- The rest is written by scripts/ledger. -->\n"
FACTS = """\
// Facts about titles.

// Fact: What is read of a title, and
// of its length?
// Relied on by: `one.cpp`,
// `two.cpp`
// Simulated: both
TEST_F(Titles, of_a_window) {}

// A comment of the source.

// Fact: Does it write?
// Relied on by: `one.cpp`
// Simulated: -
TEST(Titles, of_no_window) {}
"""


@pytest.fixture
def tree(tmp_path):
    """A tree with two facts and no finding."""
    for folder in ("scripts", "docs", "tests/acceptance/facts"):
        (tmp_path / folder).mkdir(parents=True)
    shutil.copy2(SCRIPT, tmp_path / "scripts")
    (tmp_path / "docs/windows.md").write_text(f"# Windows\n\n{MARK}", encoding="utf-8")
    (tmp_path / "tests/acceptance/findings.json").write_text("{}", encoding="utf-8")
    write_facts(tmp_path, FACTS)
    return tmp_path


def write_facts(tree, text):
    (tree / "tests/acceptance/facts/titles_fact.cpp").write_text(text, encoding="utf-8")


def ledger(tree, *arguments):
    return run_program(tree / "scripts" / "ledger", *arguments)


def succeeds(tree, *arguments) -> list[str]:
    done = ledger(tree, *arguments)
    assert (done.returncode, done.stderr) == (0, "")
    return done.stdout.splitlines()


def page(tree):
    return (tree / "docs" / "windows.md").read_text(encoding="utf-8")


def answered(name, answer):
    return {"name": name, "result": "passed", "answer": answer}


def not_measured(name):
    return {"name": name, "result": "not measured", "reason": "no window"}


def write_report(tree, *facts, system="Windows 11", programs=()):
    file = tree / "acceptance-report.json"
    report = {
        "format": "vorlen-monitor acceptance",
        "version": 1,
        "system": {"name": system, "version": "10.0.22631"},
        "programs": list(programs),
        "facts": list(facts),
    }
    file.write_text(json.dumps(report), encoding="utf-8")
    return file


def row(tree, name):
    """The cells of a fact behind the first one."""
    [line] = [line for line in page(tree).splitlines() if f"`{name}`" in line]
    return [cell.strip() for cell in line.split("|")[2:-1]]


def test_the_page_has_the_facts_with_their_tags(tree):
    assert succeeds(tree) == []
    assert page(tree).startswith(f"# Windows\n\n{MARK}\nReports so far: none.\n")
    assert "\n## Facts about titles\n" in page(tree)
    assert "| What is read of a title, and of its length?<br>`Titles.of_a_window` |" in page(tree)
    assert row(tree, "Titles.of_a_window") == ["`one.cpp`, `two.cpp`", "both", "", "", ""]
    assert row(tree, "Titles.of_no_window") == ["`one.cpp`", "–", "", "", ""]


def test_a_report_fills_the_column_of_its_system(tree):
    report = write_report(tree, answered("Titles.of_a_window", "both"))
    assert succeeds(tree, report) == []
    assert row(tree, "Titles.of_a_window")[1:] == ["both", "", "", "both"]
    assert "Reports so far: Windows 11: 10.0.22631." in page(tree)


def test_another_system_gets_a_column_of_its_own(tree):
    succeeds(tree, write_report(tree, answered("Titles.of_a_window", "both"), system="Server"))
    assert "| Windows 11 | Server |\n" in page(tree)
    assert row(tree, "Titles.of_a_window")[-1] == "both"


def test_a_contradicted_answer_is_printed_and_bold(tree):
    report = write_report(
        tree, answered("Titles.of_a_window", "none"), answered("Titles.of_no_window", "no")
    )
    assert succeeds(tree, report) == [
        "contradicted Titles.of_a_window: none, simulated: both; see `one.cpp`, `two.cpp`"
    ]
    assert row(tree, "Titles.of_a_window")[-1] == "**none**"
    assert row(tree, "Titles.of_no_window")[-1] == "no"


def test_a_fact_that_was_not_measured_keeps_an_earlier_answer(tree):
    assert succeeds(tree, write_report(tree, not_measured("Titles.of_a_window"))) == [
        "not measured Titles.of_a_window: no window"
    ]
    assert row(tree, "Titles.of_a_window")[-1] == "not measured"
    succeeds(tree, write_report(tree, answered("Titles.of_a_window", "both")))
    succeeds(tree, write_report(tree, not_measured("Titles.of_a_window")))
    assert row(tree, "Titles.of_a_window")[-1] == "both"


def test_failed_tests_and_programs_are_printed(tree):
    programs = (
        {"name": "display", "tests": [{"name": "A.b", "result": "failed", "failures": ["x\ny"]}]},
        {"name": "soak", "outcome": "its time was over", "tests": []},
    )
    failed = {"name": "Titles.of_a_window", "result": "failed", "failures": ["z"]}
    assert succeeds(tree, write_report(tree, failed, programs=programs)) == [
        "failed A.b: x y",
        "failed Titles.of_a_window: z",
        "failed soak: its time was over",
    ]


def test_a_suite_of_facts_that_failed_costs_no_other_answer(tree):
    failed = {"name": "facts", "outcome": "Windows: its time was over, no results"}
    report = write_report(tree, answered("Titles.of_a_window", "both"), programs=[failed])
    assert succeeds(tree, report) == ["failed facts: Windows: its time was over, no results"]
    assert row(tree, "Titles.of_a_window")[-1] == "both"


def test_a_fact_that_this_tree_does_not_have_is_printed(tree):
    report = write_report(tree, answered("Titles.of_old", "both"))
    assert succeeds(tree, report) == ["unknown Titles.of_old: this tree has no such fact"]


def test_a_comparison_changes_nothing(tree):
    succeeds(tree)
    before = page(tree)
    report = write_report(tree, not_measured("Titles.of_a_window"))
    assert succeeds(tree, "--compare", report) == ["not measured Titles.of_a_window: no window"]
    assert page(tree) == before
    assert (tree / "tests/acceptance/findings.json").read_text() == "{}"


def test_an_answer_of_an_unknown_fact_is_not_kept(tree):
    succeeds(tree, write_report(tree, answered("Titles.of_old", "both")))
    assert "Titles.of_old" not in (tree / "tests/acceptance/findings.json").read_text()


@pytest.mark.parametrize("text", ["<b>x</b>", "![x](http://x)", "a*b*", "a_b_ & c"])
def test_an_answer_is_no_markup(tree, text):
    succeeds(tree, write_report(tree, answered("Titles.of_no_window", text)))
    assert row(tree, "Titles.of_no_window")[-1] == f"`{text}`"


def test_a_failure_does_not_control_the_terminal(tree):
    failed = {"name": "A.b", "result": "failed", "failures": ["\x1b[2Jx\r\u202e"]}
    report = write_report(tree, programs=[{"name": "display", "tests": [failed]}])
    assert succeeds(tree, report) == ["failed A.b:  [2Jx  "]


USABLE = {
    "format": "vorlen-monitor acceptance",
    "version": 1,
    "system": {"name": "Windows 11", "version": "10.0.22631"},
    "programs": [],
    "facts": [answered("Titles.of_a_window", "both")],
}
FACT = USABLE["facts"][0]


@pytest.mark.parametrize(
    "change",
    [
        {"version": None},
        {"system": None},
        {"system": {"name": "Windows | 11", "version": "10"}},
        {"system": {"name": "Windows 11", "version": "<b>10</b>"}},
        {"system": {"name": "Windows 11\n", "version": "10"}},
        {"programs": None},
        {"programs": [{"name": "display", "tests": [{}]}]},
        {"programs": [{"name": "display", "outcome": 1}]},
        {"facts": None},
        {"facts": ["Titles.of_a_window"]},
        {"facts": [FACT | {"name": ["a"]}]},
        {"facts": [FACT | {"result": "other"}]},
        {"facts": [FACT | {"answer": 1}]},
        {"facts": [FACT | {"answer": "a | b"}]},
        {"facts": [FACT | {"answer": "a\nb"}]},
        {"facts": [FACT | {"answer": "a`<b>`"}]},
        {"facts": [FACT | {"answer": "a" * 201}]},
        {"facts": [{"name": "Titles.of_a_window", "result": "not measured"}]},
        {"facts": [{"name": "A.b", "result": "failed", "failures": [1]}]},
    ],
)
def test_a_report_with_a_defect_is_refused_and_changes_nothing(tree, change):
    file = tree / "acceptance-report.json"
    file.write_text(json.dumps(USABLE | change), encoding="utf-8")
    assert "acceptance-report.json has " in complaint_of(ledger(tree, file))
    assert (tree / "tests/acceptance/findings.json").read_text() == "{}"


def test_a_report_without_a_part_is_refused(tree):
    file = tree / "acceptance-report.json"
    for part in ("version", "system", "programs", "facts"):
        file.write_text(json.dumps({key: USABLE[key] for key in USABLE if key != part}))
        assert "acceptance-report.json has " in complaint_of(ledger(tree, file))


def test_an_answer_with_a_backslash_is_code(tree):
    succeeds(tree, write_report(tree, answered("Titles.of_no_window", r"\\?\x")))
    assert row(tree, "Titles.of_no_window")[-1] == r"`\\?\x`"


def test_a_page_that_differs_names_the_command_that_writes_it(tree):
    assert complaint_of(ledger(tree, "--check")) == (
        "ledger: docs/windows.md differs from the facts; this command writes it: scripts/ledger\n"
    )
    succeeds(tree)
    succeeds(tree, "--check")


@pytest.mark.parametrize("tag", ["Fact", "Relied on by", "Simulated"])
def test_a_fact_without_a_tag_is_named_by_its_line(tree, tag):
    complete, _, last = FACTS.rpartition(f"// {tag}: ")
    write_facts(tree, f"{complete}// {last}")
    assert complaint_of(ledger(tree)).startswith("ledger: titles_fact.cpp:15: put “Fact”, ")


def test_a_file_without_a_subject_is_an_error(tree):
    write_facts(tree, FACTS.replace("// Facts about", "// About"))
    assert "titles_fact.cpp: begin it with" in complaint_of(ledger(tree))


@pytest.mark.parametrize(
    "text",
    ["", "[]", '{"format": "other"}', pytest.param("[" * 100_000, id="deep")],
)
def test_another_file_than_a_report_is_refused(tree, text):
    (tree / "other.json").write_text(text, encoding="utf-8")
    assert "other.json" in complaint_of(ledger(tree, tree / "other.json"))


def test_a_newer_report_is_refused(tree):
    file = write_report(tree)
    file.write_text(file.read_text().replace('"version": 1,', '"version": 2,'), encoding="utf-8")
    assert "has version 2; this script reads version 1" in complaint_of(ledger(tree, file))


@pytest.mark.parametrize("arguments", [["--write"], ["--compare"], ["a", "b"], ["--check", "a"]])
def test_unknown_arguments_are_refused(tree, arguments):
    assert complaint_of(ledger(tree, *arguments)) == (
        "ledger: usage: scripts/ledger [--check | --compare FILE | FILE]\n"
    )
