#pragma once

#include "vorlen/status.h"

#include <string>
#include <unordered_map>

namespace tests {

// The status tables that another translation unit has of its own.
struct StatusTables {
    const std::unordered_map<vorlen::VLStatus, std::string>& longTexts;
    const std::unordered_map<vorlen::VLStatus, std::string>& shortTexts;
};

StatusTables tablesOfSecondUnit();

} // namespace tests
