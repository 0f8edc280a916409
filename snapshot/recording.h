#pragma once

#include "snapshot/reading.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace snapshot {

// A text that is not a recording: what() is one sentence that says what is wrong with it.
class RecordingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The JSON of a recording, as docs/recording.schema.json describes it: UTF-8, with one line for
// each window and each display mode, and a line feed at its end.
std::string toRecording(const Reading& reading);

// Throws a RecordingError.
Reading fromRecording(std::string_view text);

} // namespace snapshot
