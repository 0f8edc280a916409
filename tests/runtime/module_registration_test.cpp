#include "tests/runtime/captured_standard_error.h"
#include "tests/runtime/logger_fixture.h"
#include "tests/runtime/shipped_runtime.h"
#include "vorlen/monitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the modules below did, in order.
std::vector<std::string> journal;

void initFirst() {
    journal.emplace_back("init first");
}
void cleanUpFirst() {
    journal.emplace_back("cleanup first");
}
void initSecond() {
    journal.emplace_back("init second");
}
void cleanUpSecond() {
    journal.emplace_back("cleanup second");
}
void failWithAReason() {
    throw std::runtime_error("no desktop");
}
void failWithoutAReason() {
    throw 42;
}

class ModuleRegistration : public testing::Test {
protected:
    ModuleRegistration() { journal.clear(); }

    void registerBoth() const {
        runtime.registerInit(initFirst);
        runtime.registerCleanup(cleanUpFirst);
        runtime.registerInit(initSecond);
        runtime.registerCleanup(cleanUpSecond);
    }

    // The one line that was written, without its end.
    std::string complaint() const {
        const std::string text = standardError.text();
        EXPECT_TRUE(text.ends_with("\r\n")) << text;
        return text.substr(0, text.find('\r'));
    }

    const TemporaryFolder folder;
    const CapturedStandardError standardError{folder.path / "standard error"};
    const ShippedRuntime runtime;
};

TEST_F(ModuleRegistration, runs_inits_in_order_and_cleanups_in_reverse) {
    registerBoth();
    EXPECT_TRUE(runtime.initialize());
    EXPECT_THAT(journal, ElementsAre("init first", "init second"));
    journal.clear();
    runtime.shutdown();
    EXPECT_THAT(journal, ElementsAre("cleanup second", "cleanup first"));
    EXPECT_EQ(standardError.text(), "");
}

TEST_F(ModuleRegistration, may_be_started_and_stopped_without_any_module) {
    EXPECT_TRUE(runtime.initialize());
    runtime.shutdown();
    runtime.shutdown();
    EXPECT_EQ(standardError.text(), "");
}

TEST_F(ModuleRegistration, reaches_a_module_that_came_after_the_start_when_started_again) {
    runtime.registerInit(initFirst);
    EXPECT_TRUE(runtime.initialize());
    runtime.registerInit(initSecond);
    journal.clear();
    EXPECT_TRUE(runtime.initialize());
    EXPECT_THAT(journal, ElementsAre("init first", "init second"));
}

TEST_F(ModuleRegistration, stops_at_a_failing_init_says_why_and_cleans_up) {
    registerBoth();
    runtime.registerInit(failWithAReason);
    runtime.registerCleanup(cleanUpFirst); // registered anew, and so the last
    EXPECT_FALSE(runtime.initialize());
    EXPECT_THAT(journal,
                ElementsAre("init first", "init second", "cleanup first", "cleanup second"));
    EXPECT_EQ(complaint(), "vorlen_runtime: the init of a module failed: no desktop");
}

TEST_F(ModuleRegistration, does_not_run_the_inits_behind_a_failing_one) {
    runtime.registerInit(failWithoutAReason);
    runtime.registerInit(initFirst);
    EXPECT_FALSE(runtime.initialize());
    EXPECT_THAT(journal, IsEmpty());
    EXPECT_EQ(complaint(),
              "vorlen_runtime: the init of a module failed for a reason that it did not name");
}

TEST_F(ModuleRegistration, goes_on_after_a_failing_cleanup_and_says_why) {
    runtime.registerCleanup(cleanUpFirst);
    runtime.registerCleanup(failWithAReason);
    runtime.registerCleanup(cleanUpSecond);
    runtime.shutdown();
    EXPECT_THAT(journal, ElementsAre("cleanup second", "cleanup first"));
    EXPECT_EQ(complaint(), "vorlen_runtime: the cleanup of a module failed: no desktop");
}

TEST_F(ModuleRegistration, goes_on_after_a_cleanup_that_fails_without_a_reason) {
    runtime.registerCleanup(cleanUpFirst);
    runtime.registerCleanup(failWithoutAReason);
    runtime.shutdown();
    EXPECT_THAT(journal, ElementsAre("cleanup first"));
    EXPECT_EQ(complaint(),
              "vorlen_runtime: the cleanup of a module failed for a reason that it did not name");
}

TEST_F(ModuleRegistration, runs_a_function_once_however_often_it_is_registered) {
    runtime.registerInit(initFirst);
    runtime.registerInit(initFirst);
    EXPECT_TRUE(runtime.initialize());
    EXPECT_THAT(journal, ElementsAre("init first"));
}

TEST_F(ModuleRegistration, refuses_what_is_no_function) {
    runtime.registerInit(nullptr);
    ASSERT_EQ(complaint(), "vorlen_runtime: a module registered no init function: register the "
                           "address of a function of the module");
    EXPECT_TRUE(runtime.initialize());
}

TEST_F(ModuleRegistration, refuses_what_is_no_cleanup_function) {
    runtime.registerCleanup(nullptr);
    ASSERT_EQ(complaint(), "vorlen_runtime: a module registered no cleanup function: register the "
                           "address of a function of the module");
    runtime.shutdown();
}

class ModuleVersions : public ModuleRegistration {
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

TEST_F(ModuleVersions, are_those_of_the_last_registration) {
    runtime.registerVersion("one", 1, 2, 3);
    runtime.registerVersion("one", 3, 2, 1);
    EXPECT_EQ(versionOf("one"), "3.2.1");
}

TEST_F(ModuleVersions, are_unknown_for_any_other_name) {
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
    runtime.registerVersion("", 1, 2, 3);
    EXPECT_EQ(complaint(), "vorlen_runtime: a module registered no name: register a name of at "
                           "least one character");
    EXPECT_EQ(versionOf(""), "");
}

TEST_F(ModuleVersions, need_a_name_that_is_a_text) {
    runtime.registerVersion(nullptr, 1, 2, 3);
    EXPECT_EQ(complaint(), "vorlen_runtime: a module registered no name: register a name of at "
                           "least one character");
}

class ModuleTables : public ModuleRegistration {
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

TEST_F(ModuleTables, of_lists_are_kept_beside_that_of_the_service) {
    vorlen::WindowEnumWrapper table{};
    table.updateMonitorList = update;
    runtime.registerWindowEnumWrapper(table);
    ASSERT_NE(runtime.getWindowEnumWrapper(), nullptr);
    EXPECT_EQ(runtime.getWindowEnumWrapper()->updateMonitorList, update);
    EXPECT_EQ(runtime.getMonitorWrapper(), nullptr);
}

// The shipped module, on whatever desktop there is.
class ShippedModule : public ModuleRegistration {
protected:
    ShippedModule() { load(); }

    void load() {
        module.emplace("../bin/libvorlen_monitor.dll");
        module->resolve(getModelName, "getVorlenMonitorModelName");
    }

    std::optional<Library> module;
    decltype(getVorlenMonitorModelName)* getModelName = nullptr;
};

TEST_F(ShippedModule, registers_itself_and_works_between_start_and_end) {
    std::int32_t major = 0;
    std::int32_t minor = -1;
    std::int32_t patch = 0;
    EXPECT_TRUE(runtime.getModuleVersion("monitor", &major, &minor, &patch));
    EXPECT_EQ(major, 2);
    EXPECT_EQ(minor, 0);
    EXPECT_EQ(patch, 4);

    EXPECT_EQ(getModelName(), nullptr);
    EXPECT_TRUE(runtime.initialize());
    EXPECT_NE(getModelName(), nullptr);
    runtime.shutdown();
    EXPECT_EQ(getModelName(), nullptr);
}

TEST_F(ShippedModule, is_called_no_more_once_it_has_been_unloaded) {
    EXPECT_NE(runtime.getMonitorWrapper(), nullptr);
    EXPECT_NE(runtime.getWindowEnumWrapper(), nullptr);
    EXPECT_TRUE(runtime.initialize());
    module.reset();
    EXPECT_EQ(runtime.getMonitorWrapper(), nullptr);
    EXPECT_EQ(runtime.getWindowEnumWrapper(), nullptr);
    EXPECT_TRUE(runtime.initialize());
    runtime.shutdown();
}

TEST_F(ShippedModule, works_again_when_it_is_loaded_again) {
    module.reset();
    load();
    EXPECT_NE(runtime.getMonitorWrapper(), nullptr);
    EXPECT_TRUE(runtime.initialize());
    EXPECT_NE(getModelName(), nullptr);
    runtime.shutdown();
    EXPECT_EQ(getModelName(), nullptr);
}

} // namespace
} // namespace tests
