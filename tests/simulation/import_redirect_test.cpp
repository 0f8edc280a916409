#include "simulation/import_redirect.h"
#include "tests/support/simulation.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tests {
namespace {

HMODULE thisProgram() {
    return GetModuleHandleW(nullptr);
}

DWORD WINAPI oneTick() {
    return 1;
}

DWORD WINAPI twoTicks() {
    return 2;
}

// The compiler assumes that an import table does not change within one function: a function of its
// own reads the table at each call.
__declspec(noinline) DWORD ticks() {
    return GetTickCount();
}

TEST(ImportRedirect, redirects_calls_until_it_goes_out_of_scope) {
    const ULONGLONG real = ticks();
    {
        const ImportRedirect redirect(thisProgram(), "GetTickCount", addressOf(oneTick));
        EXPECT_EQ(ticks(), 1u);
        EXPECT_GE(reinterpret_cast<decltype(GetTickCount)*>(redirect.original())(), real);
    }
    EXPECT_GE(ticks(), real);
}

TEST(ImportRedirect, can_be_nested) {
    const ImportRedirect outer(thisProgram(), "GetTickCount", addressOf(oneTick));
    {
        const ImportRedirect inner(thisProgram(), "GetTickCount", addressOf(twoTicks));
        EXPECT_EQ(ticks(), 2u);
    }
    EXPECT_EQ(ticks(), 1u);
}

TEST(ImportRedirect, refuses_a_function_that_the_image_does_not_import) {
    EXPECT_EQ(importedFunction(thisProgram(), "NoSuchFunction"), nullptr);
    EXPECT_THROW(ImportRedirect(thisProgram(), "NoSuchFunction", addressOf(oneTick)),
                 std::runtime_error);
}

} // namespace
} // namespace tests
