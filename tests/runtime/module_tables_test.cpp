#include "tests/runtime/runtime_fixtures.h"

#include <stdexcept>

namespace tests {
namespace {

class ModuleVersions : public RegistrationTest {
protected:
    // The version as text; empty for a module that is not known, with nothing written.
    std::string versionOf(const char* name) const {
        std::int32_t major = -7;
        std::int32_t minor = -8;
        std::int32_t patch = -9;
        if (!runtime.getModuleVersion(name, &major, &minor, &patch)) {
            EXPECT_EQ(major, -7);
            EXPECT_EQ(minor, -8);
            EXPECT_EQ(patch, -9);
            return {};
        }
        return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
    }
};

TEST_F(ModuleVersions, are_kept_by_name) {
    runtime.registerVersion("one", 1, 2, 3);
    runtime.registerVersion("two", 4, 5, 6);
    EXPECT_EQ(versionOf("one"), "1.2.3");
    EXPECT_EQ(versionOf("two"), "4.5.6");
}

TEST_F(ModuleVersions, are_replaced_by_a_later_registration) {
    runtime.registerVersion("one", 1, 2, 3);
    runtime.registerVersion("one", 3, 2, 1);
    EXPECT_EQ(versionOf("one"), "3.2.1");
}

TEST_F(ModuleVersions, are_unknown_for_other_names) {
    runtime.registerVersion("one", 1, 2, 3);
    for (const char* const name : {"", "on", "one ", "One", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(versionOf(name), "");
    }
}

TEST_F(ModuleVersions, keep_a_copy_of_the_name) {
    std::string name = "one";
    runtime.registerVersion(name.c_str(), 1, 2, 3);
    name[0] = 'X';
    EXPECT_EQ(versionOf("one"), "1.2.3");
}

TEST_F(ModuleVersions, need_a_name) {
    const std::string expected = "vorlen_runtime: a module registered no name: register a name of "
                                 "at least one character\r\n";
    runtime.registerVersion("", 1, 2, 3);
    runtime.registerVersion(nullptr, 1, 2, 3);
    EXPECT_EQ(standardError.text(), expected + expected);
    EXPECT_EQ(versionOf(""), "");
}

class ModuleTables : public RegistrationTest {
protected:
    static const char* firstName() { return "first"; }
    static const char* secondName() { return "second"; }
    static const std::vector<vorlen::ui::MonitorInfo>& monitors();
    static void update() {}
};

const std::vector<vorlen::ui::MonitorInfo>& ModuleTables::monitors() {
    throw std::logic_error("the table is only looked at");
}

TEST_F(ModuleTables, are_null_before_any_registration) {
    EXPECT_EQ(runtime.getMonitorWrapper(), nullptr);
    EXPECT_EQ(runtime.getWindowEnumWrapper(), nullptr);
}

TEST_F(ModuleTables, are_copied) {
    vorlen::MonitorWrapper table{};
    table.getMonitorList = monitors;
    table.getCurrentMonitorName = firstName;
    runtime.registerMonitorWrapper(table);
    table.getCurrentMonitorName = secondName;
    ASSERT_NE(runtime.getMonitorWrapper(), nullptr);
    EXPECT_STREQ(runtime.getMonitorWrapper()->getCurrentMonitorName(), "first");
}

TEST_F(ModuleTables, are_replaced_by_a_later_registration) {
    vorlen::MonitorWrapper table{};
    table.getMonitorList = monitors;
    table.getCurrentMonitorName = firstName;
    runtime.registerMonitorWrapper(table);
    table.getCurrentMonitorName = secondName;
    runtime.registerMonitorWrapper(table);
    EXPECT_STREQ(runtime.getMonitorWrapper()->getCurrentMonitorName(), "second");
}

TEST_F(ModuleTables, hold_that_of_the_lists_beside_that_of_the_service) {
    vorlen::WindowEnumWrapper table{};
    table.updateMonitorList = update;
    runtime.registerWindowEnumWrapper(table);
    ASSERT_NE(runtime.getWindowEnumWrapper(), nullptr);
    EXPECT_EQ(runtime.getWindowEnumWrapper()->updateMonitorList, update);
    EXPECT_EQ(runtime.getMonitorWrapper(), nullptr);
}

} // namespace
} // namespace tests
