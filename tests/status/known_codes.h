#pragma once

#include "vorlen/status.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

// One code as users and other components know it.
struct KnownCode {
    std::int32_t value;
    vorlen::VLStatus enumerator;
    std::string name;
    std::string shortText;
    std::string longText;
};

// Every code of the kit. The values and texts are written out once more, on purpose: a change of
// the header that changes what reaches a user's report has to be made here as well.
const std::vector<KnownCode>& knownCodes();

} // namespace tests
