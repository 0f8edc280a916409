"""The viewer's pictures, compared with those in tests/pictures and with that of the README."""

import subprocess

import pytest
from PIL import Image, ImageChops, ImageDraw

from desktop import PROJECT
from processes import TIMEOUT_S, complaint_of, run_program

SCRIPT = PROJECT / "scripts/pictures"
REFERENCES = PROJECT / "tests/pictures"
COMPARED = [*sorted(REFERENCES.glob("*.png")), PROJECT / "docs/viewer.png"]
# Another version of a library may draw the edges of letters a little lighter or darker. So a pixel
# may differ by this much, of 255, in red, green and blue. A few pixels may differ by more.
TOLERATED_DIFFERENCE = 48
TOLERATED_PIXELS = 20


@pytest.fixture(scope="module")
def drawn(tmp_path_factory):
    """The folder with the pictures of the viewer as it is now."""
    folder = tmp_path_factory.mktemp("pictures")
    subprocess.run([SCRIPT, folder], check=True, timeout=10 * TIMEOUT_S)
    return folder


def differing_pixels(one: Image.Image, other: Image.Image) -> int:
    """The number of the pixels that differ more than is tolerated."""
    red, green, blue = ImageChops.difference(one.convert("RGB"), other.convert("RGB")).split()
    strongest = ImageChops.lighter(ImageChops.lighter(red, green), blue)
    return sum(strongest.histogram()[TOLERATED_DIFFERENCE + 1 :])


def differs(one: Image.Image, other: Image.Image) -> str:
    """In what the pictures differ; empty when they are equal within the tolerance."""
    if one.size != other.size:
        return f"its size is {one.size} and should be {other.size}"
    differing = differing_pixels(one, other)
    return f"{differing} pixels differ" if differing > TOLERATED_PIXELS else ""


@pytest.mark.parametrize("reference", COMPARED, ids=lambda file: file.stem)
def test_a_picture_equals_its_reference(drawn, reference):
    name = reference.relative_to(PROJECT)
    with Image.open(drawn / name) as picture, Image.open(reference) as expected:
        difference = differs(picture, expected)
    assert difference == "", (
        f"{drawn / name} is not {name}: {difference}, and {TOLERATED_PIXELS} are tolerated. "
        "When it should differ, scripts/pictures draws all of them again."
    )


def test_there_is_a_reference_for_every_picture(drawn):
    names = {file.relative_to(drawn) for file in drawn.rglob("*.png")}
    assert names == {file.relative_to(PROJECT) for file in COMPARED}
    assert len(names) == 3 * 2 * 2 + 1


@pytest.mark.parametrize("reference", COMPARED, ids=lambda file: file.stem)
def test_the_comparison_finds_another_mark_or_letter(reference):
    with Image.open(reference) as opened:
        expected = opened.convert("RGB")
    for size in (5, 8):  # less than a letter, and less than a mark on the map
        wrong = expected.copy()
        middle = (wrong.width // 4, wrong.height // 4)
        box = (*middle, middle[0] + size - 1, middle[1] + size - 1)
        ImageDraw.Draw(wrong).rectangle(box, "red")
        assert differs(wrong, expected) == f"{size * size} pixels differ"
    assert differs(expected, expected) == ""


def test_the_comparison_finds_another_size():
    one, other = Image.new("RGB", (10, 10)), Image.new("RGB", (10, 11))
    assert differs(one, other) == "its size is (10, 10) and should be (10, 11)"


def test_the_larger_scale_has_twice_the_pixels():
    for file in REFERENCES.glob("*-100.png"):
        with Image.open(file) as small, Image.open(
            file.with_name(file.name.replace("-100", "-200"))
        ) as large:
            assert large.size == (2 * small.width, 2 * small.height)


def test_most_of_a_picture_in_high_contrast_is_black():
    with Image.open(REFERENCES / "kit_at_30_hz-high-100.png") as picture:
        histogram = picture.convert("L").histogram()
    assert histogram[0] > 0.5 * sum(histogram)


def test_a_wrong_argument_is_refused_in_one_line():
    assert (
        complaint_of(run_program(SCRIPT, "--check"))
        == "pictures: usage: scripts/pictures [FOLDER]\n"
    )
