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

// Every code of the kit. The values and texts are repeated here on purpose: a change of the header
// that changes what a user reads, or reports, must be made here too. Two texts have mistakes that
// must stay: the long one of 33 and the short one of 99.
const std::vector<KnownCode>& knownCodes();

} // namespace tests
