#pragma once

#include "simulation/import_redirect.h"

#include <windows.h>

#include <deque>
#include <set>
#include <string>
#include <type_traits>
#include <utility>

namespace simulation {

// The redirected imports of one image. A function that the image does not import is an error,
// because a test would expect calls that cannot happen, unless the test has named it as absent.
class Redirects {
public:
    Redirects(HMODULE redirectedImage, std::set<std::string> absentFunctions)
        : image(redirectedImage), absent(std::move(absentFunctions)) {}

    // Function is the type of the platform's function, such as decltype(GetMonitorInfoW).
    template <typename Function>
    void replace(const std::string& name, std::type_identity_t<Function>* replacement) {
        if (importedFunction(image, name) != nullptr || !absent.contains(name)) {
            redirects.emplace_back(image, name, addressOf(replacement));
        }
    }

private:
    HMODULE image;
    std::set<std::string> absent;
    std::deque<ImportRedirect> redirects;
};

} // namespace simulation
