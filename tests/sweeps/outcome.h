#pragma once

#include <functional>
#include <string>

namespace tests {

// How an operation of the library ended: "returned", or the exception that left it, such as
// "std::bad_alloc" or "_com_error 0x8007000e".
std::string outcomeOf(const std::function<void()>& operation);

} // namespace tests
