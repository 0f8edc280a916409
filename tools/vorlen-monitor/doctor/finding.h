#pragma once

#include <string>
#include <vector>

namespace vorlen::tool {

enum class Severity {
    error,   // prevents a 3-D picture
    warning, // may spoil the 3-D picture, or may be the cause of an error
    note,    // worth knowing
};

// One result of the doctor. The texts are sentences in UTF-8 and may contain texts of devices and
// other programs.
struct Finding {
    Severity severity;
    std::string seen;    // what was seen, with names and numbers
    std::string meaning; // what it means for a 3-D picture
    std::string advice;  // what to do
    // Device names of the monitors that it is about; empty when it is about the whole desktop.
    std::vector<std::string> monitors = {};
    std::string code = {}; // of the function that found it; set by examine()
};

} // namespace vorlen::tool
