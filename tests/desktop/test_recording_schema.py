"""docs/recording.schema.json describes recordings: the ones that the tests of snapshot/ check."""

import copy

import jsonschema
import pytest

from recordings import EVERY_FIELD, SCHEMA, VALIDATOR, errors_of, read_recording

BY_HAND = {"format": "vorlen-monitor recording", "version": 1, "origin": "by hand"}


def test_the_schema_is_one():
    jsonschema.Draft202012Validator.check_schema(SCHEMA)


def test_a_recording_with_every_field_fits_the_schema():
    assert read_recording(EVERY_FIELD)["version"] == 1


def objects_in(value) -> list[dict]:
    children = value.values() if isinstance(value, dict) else value
    found = [value] if isinstance(value, dict) else []
    if isinstance(value, (dict, list)):
        found += [each for child in children for each in objects_in(child)]
    return found


def test_the_schema_has_no_field_that_recordings_lack():
    written = {tuple(sorted(each)) for each in objects_in(read_recording(EVERY_FIELD))}
    described = {
        tuple(sorted(each["properties"]))
        for each in objects_in(SCHEMA)
        if each.get("type") == "object" and isinstance(each.get("properties"), dict)
    }
    assert described == written


def test_a_recording_by_hand_may_be_short():
    assert errors_of(BY_HAND) == []


@pytest.mark.parametrize("missing", list(BY_HAND))
def test_the_head_of_a_recording_is_required(missing):
    assert errors_of({name: value for name, value in BY_HAND.items() if name != missing})


@pytest.mark.parametrize(
    "field",
    [
        {"version": 2},
        {"monitor": []},
        {"monitors": [{"handle": "0x1", "deviceNmae": ""}]},
        {"monitors": [{}]},
        {"shellWindow": 5},
        {"windows": [{"handle": "0x1", "title": [65536]}]},
        {"windows": [{"handle": "0x1", "style": "0x123456781"}]},
        {"displayConfiguration": {"announcedPaths": -1}},
        {"displayConfiguration": {"announcedPaths": 1001}},
        {"displayConfiguration": {"announcedModes": 100001}},
        {"monitors": [{"handle": hex(1 + i)} for i in range(1001)]},
        {"wmi": {"steps": [{"name": "CoInitialise"}]}},
    ],
)
def test_what_the_reader_refuses_does_not_fit_the_schema(field):
    assert errors_of({**BY_HAND, **field})


def test_no_field_of_a_recording_may_have_another_type():
    recording = read_recording(EVERY_FIELD)
    accepted = []
    for position, record in enumerate(objects_in(recording)):
        for name in record:
            changed = copy.deepcopy(recording)
            objects_in(changed)[position][name] = 0.5
            if VALIDATOR.is_valid(changed):
                accepted.append(name)
    assert accepted == []
