#include "runtime/kit_models.h"

#include "platform/environment.h"
#include "platform/text.h"
#include "runtime/complain.h"

#include <algorithm>

namespace vorlen {

namespace {

constexpr const wchar_t* variable = L"VORLEN_KIT_MODELS";

} // namespace

std::vector<std::string> kitModelsFromText(std::wstring_view text) {
    std::vector<std::string> models;
    if (text.empty()) {
        return models;
    }
    bool emptyName = false;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(L';', start), text.size());
        const std::string model = lowBytes(text.substr(start, end - start));
        if (model.empty()) {
            emptyName = true;
        } else if (std::ranges::find(models, model) == models.end()) {
            models.push_back(model);
        }
        start = end + 1;
    }
    if (emptyName) {
        complain("VORLEN_KIT_MODELS holds an empty name, which is left out: write model names "
                 "separated by single ';', such as ONE;TWO");
    }
    return models;
}

std::vector<std::string> kitModelsFromEnvironment() {
    return kitModelsFromText(environmentText(variable));
}

} // namespace vorlen
