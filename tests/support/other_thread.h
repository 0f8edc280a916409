#pragma once

#include <optional>
#include <thread>
#include <type_traits>

namespace tests {

// Calls the function, which must not throw, on another thread, and returns its result. Not
// std::async: Clang cannot link what it needs of GCC's library.
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
