#pragma once

#include <nlohmann/json.hpp>

// What the writer and the reader of recordings share.
namespace snapshot::recording {

using Json = nlohmann::json;

// The first two fields of every recording.
constexpr const char* format = "vorlen-monitor recording";
constexpr int version = 1;

} // namespace snapshot::recording
