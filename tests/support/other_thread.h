#pragma once

#include <optional>
#include <thread>
#include <type_traits>

namespace tests {

// What the function, which must not throw, returns on a thread of its own. Not std::async: Clang
// cannot link what that needs of GCC's library.
template <typename Function>
auto onAnotherThread(Function function) {
    if constexpr (std::is_void_v<std::invoke_result_t<Function>>) {
        std::thread(function).join();
    } else {
        std::optional<std::invoke_result_t<Function>> result;
        std::thread([&] { result.emplace(function()); }).join();
        return *result;
    }
}

} // namespace tests
