#include "simulation/import_redirect.h"
#include "tests/support/module_under_test.h"
#include "tests/support/simulation.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tests {
namespace {

TEST(ModuleUnderTest, is_the_shipped_library_bound_to_the_recording_runtime) {
    const ModuleUnderTest module;
    EXPECT_EQ(GetModuleHandleW(L"vorlen_runtime.dll"), module.runtimeImage());
    EXPECT_EQ(GetModuleHandleW(L"libvorlen_monitor.dll"), module.image());
    EXPECT_FALSE(module.runtime.registrations().empty());
}

TEST(ModuleUnderTest, leaves_nothing_loaded) {
    { const ModuleUnderTest module; }
    EXPECT_EQ(GetModuleHandleW(L"vorlen_runtime.dll"), nullptr);
    EXPECT_EQ(GetModuleHandleW(L"libvorlen_monitor.dll"), nullptr);
}

TEST(ModuleUnderTest, has_a_core_of_its_own_each_time) {
    {
        const ModuleUnderTest module;
        module.runtime.setMonitorName("left over");
    }
    const ModuleUnderTest module;
    EXPECT_EQ(module.runtime.monitorName(), "");
}

TEST(ImportRedirect, leaves_an_image_alone_that_was_unloaded_meanwhile) {
    ModuleUnderTest module;
    const auto ignore = +[](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
        return 0;
    };
    const ImportRedirect redirect(module.image(), "SendMessageW", addressOf(ignore));
    module.unload();
}

TEST(Library, refuses_a_file_that_is_not_there) {
    EXPECT_THROW(Library("no_such_library.dll"), std::runtime_error);
}

} // namespace
} // namespace tests
