#pragma once

#include "snapshot/reading.h"

#include <string>

namespace tests {

// A reading in which no field has its default value and no two fields have the same value.
snapshot::Reading everyField();

// Its recording: the file every_field.json.
std::string everyFieldRecording();

} // namespace tests
