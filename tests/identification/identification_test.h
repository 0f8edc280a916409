#pragma once

#include "tests/fixtures/module_test.h"
#include "tests/support/account.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace tests {

// The device path of a monitor, and the WMI instance name that belongs to it.
inline std::wstring devicePath(const std::wstring& hardware, const std::wstring& instance) {
    return LR"(\\?\DISPLAY#)" + hardware + L"#" + instance +
           L"#{e6f07b5f-ee97-4a90-b076-33f57bf4eaa7}";
}
inline std::wstring instanceName(const std::wstring& hardware, const std::wstring& instance) {
    return LR"(DISPLAY\)" + hardware + LR"(\)" + instance + L"_0";
}

// The blocks of memory that the cache in this program, which keeps every path, takes for one of
// these paths with a short text: the entry and the path.
inline constexpr std::size_t blocksPerCachedPath = 2;

// A test of the identification in the shipped library, whose service has been made on a desktop
// without monitors and without a question to WMI.
class IdentificationTest : public ModuleTest {
protected:
    void SetUp() override {
        module.init();
        ASSERT_THAT(desktop.wmi.calls(), testing::IsEmpty());
    }

    // Puts a monitor on the desktop, behind the others.
    void attach(const std::wstring& path) {
        const std::wstring name = LR"(\\.\DISPLAY)" + std::to_wstring(desktop.monitors.all.size());
        desktop.monitors.add(name, DisplayMode{0, 0, 1920, 1080, 60});
        desktop.displayPaths.add(name, L"Model", path);
    }

    // Clears the journal, lets the module enumerate again, and returns the identifiers that its
    // list then shows.
    std::vector<std::wstring> identify() {
        desktop.journal.clear();
        module.exports->updateMonitorList();
        std::vector<MonitorListItem> items(desktop.monitors.all.size());
        const int count =
            module.exports->getMonitorList(items.data(), static_cast<std::int32_t>(items.size()));
        EXPECT_EQ(static_cast<std::size_t>(count), items.size());
        std::vector<std::wstring> identifiers;
        identifiers.reserve(items.size());
        for (const MonitorListItem& item : items) {
            identifiers.emplace_back(item.monitorId);
        }
        return identifiers;
    }
};

} // namespace tests
