"""Recordings of vorlen-monitor, and their schema."""

import json

import jsonschema

from desktop import PROJECT

SCHEMA = json.loads((PROJECT / "docs/recording.schema.json").read_text(encoding="utf-8"))
VALIDATOR = jsonschema.Draft202012Validator(SCHEMA)
EVERY_FIELD = PROJECT / "tests/snapshot/every_field.json"


def errors_of(recording) -> list[str]:
    """Where the recording breaks the schema; empty when it does not."""
    return [f"{error.json_path}: {error.message}" for error in VALIDATOR.iter_errors(recording)]


def read_recording(file) -> dict:
    recording = json.loads(file.read_text(encoding="utf-8"))
    assert errors_of(recording) == []
    return recording
