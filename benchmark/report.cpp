#include "benchmark/report.h"

#include <nlohmann/json.hpp>

namespace bench {

std::string toJson(const std::vector<Row>& rows) {
    auto document = nlohmann::ordered_json::array();
    for (const Row& row : rows) {
        nlohmann::ordered_json entry = {
            {"what", row.what}, {"beside", row.beside}, {"value", row.value}, {"unit", row.unit}};
        if (row.atLeast) {
            entry["atLeast"] = *row.atLeast;
        }
        if (row.atMost) {
            entry["atMost"] = *row.atMost;
        }
        entry["measured"] = row.measured;
        document.push_back(entry);
    }
    return document.dump(2) + '\n';
}

} // namespace bench
