#include "tools/vorlen-monitor/doctor/examination.h"

#include <algorithm>

namespace vorlen::tool {

std::vector<std::wstring> kitModelsIn(std::wstring_view variable) {
    std::vector<std::wstring> models;
    for (std::size_t start = 0; start < variable.size();) {
        const std::size_t end = std::min(variable.find(L';', start), variable.size());
        if (end > start) {
            models.emplace_back(variable.substr(start, end - start));
        }
        start = end + 1;
    }
    return models;
}

bool isJudged(const Examination& examination, std::uint64_t handle) {
    const auto& judged = examination.status.monitor;
    return judged && reinterpret_cast<std::uintptr_t>(judged->handle) == handle;
}

bool namesKitModel(const Examination& examination, std::wstring_view friendlyName) {
    return std::ranges::any_of(examination.kitModels, [&](const std::wstring& model) {
        return friendlyName.find(model) != std::wstring_view::npos;
    });
}

} // namespace vorlen::tool
