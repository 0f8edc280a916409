#include "tests/runtime/runtime_fixtures.h"
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

class ModuleRegistration : public RegistrationTest {
protected:
    ModuleRegistration() { journal.clear(); }

    void registerBoth() const {
        runtime.registerInit(initFirst);
        runtime.registerCleanup(cleanUpFirst);
        runtime.registerInit(initSecond);
        runtime.registerCleanup(cleanUpSecond);
    }
};

// Promise (Runtime and its log): `Vorlen_Initialize` runs the inits of the modules in the order of
// registration, `Vorlen_Shutdown` the cleanups in reverse.
TEST_F(ModuleRegistration, runs_inits_in_order_and_cleanups_in_reverse) {
    registerBoth();
    EXPECT_TRUE(runtime.initialize());
    EXPECT_THAT(journal, ElementsAre("init first", "init second"));
    journal.clear();
    runtime.shutdown();
    EXPECT_THAT(journal, ElementsAre("cleanup second", "cleanup first"));
    EXPECT_EQ(standardError.text(), "");
}

TEST_F(ModuleRegistration, starts_and_stops_without_a_module) {
    EXPECT_TRUE(runtime.initialize());
    runtime.shutdown();
    runtime.shutdown();
    EXPECT_EQ(standardError.text(), "");
}

TEST_F(ModuleRegistration, runs_inits_of_later_modules_at_the_next_start) {
    runtime.registerInit(initFirst);
    EXPECT_TRUE(runtime.initialize());
    runtime.registerInit(initSecond);
    journal.clear();
    EXPECT_TRUE(runtime.initialize());
    EXPECT_THAT(journal, ElementsAre("init first", "init second"));
}

// Promise (Runtime and its log): When an init fails, `Vorlen_Initialize` runs all cleanups, writes
// one log line of level `critical` and returns false.
TEST_F(ModuleRegistration, cleans_up_after_a_failing_init) {
    registerBoth();
    runtime.registerInit(failWithAReason);
    runtime.registerCleanup(cleanUpFirst); // registered again, and so the last
    EXPECT_FALSE(runtime.initialize());
    EXPECT_THAT(journal,
                ElementsAre("init first", "init second", "cleanup first", "cleanup second"));
    EXPECT_EQ(complaint(), "critical the init of a module failed: no desktop");
}

TEST_F(ModuleRegistration, stops_at_a_failing_init) {
    runtime.registerInit(failWithoutAReason);
    runtime.registerInit(initFirst);
    EXPECT_FALSE(runtime.initialize());
    EXPECT_THAT(journal, IsEmpty());
    EXPECT_EQ(complaint(),
              "critical the init of a module failed with an exception of unknown type");
}

TEST_F(ModuleRegistration, goes_on_after_a_failing_cleanup) {
    runtime.registerCleanup(cleanUpFirst);
    runtime.registerCleanup(failWithAReason);
    runtime.registerCleanup(cleanUpSecond);
    runtime.shutdown();
    EXPECT_THAT(journal, ElementsAre("cleanup second", "cleanup first"));
    EXPECT_EQ(complaint(), "critical the cleanup of a module failed: no desktop");
}

TEST_F(ModuleRegistration, reports_a_cleanup_that_fails_without_a_reason) {
    runtime.registerCleanup(cleanUpFirst);
    runtime.registerCleanup(failWithoutAReason);
    runtime.shutdown();
    EXPECT_THAT(journal, ElementsAre("cleanup first"));
    EXPECT_EQ(complaint(),
              "critical the cleanup of a module failed with an exception of unknown type");
}

TEST_F(ModuleRegistration, runs_a_function_once_that_is_registered_twice) {
    runtime.registerInit(initFirst);
    runtime.registerInit(initFirst);
    EXPECT_TRUE(runtime.initialize());
    EXPECT_THAT(journal, ElementsAre("init first"));
}

TEST_F(ModuleRegistration, refuses_a_null_init) {
    runtime.registerInit(nullptr);
    ASSERT_EQ(complaint(), "vorlen_runtime: a module registered no init function: register the "
                           "address of a function of the module");
    EXPECT_TRUE(runtime.initialize());
}

TEST_F(ModuleRegistration, refuses_a_null_cleanup) {
    runtime.registerCleanup(nullptr);
    ASSERT_EQ(complaint(), "vorlen_runtime: a module registered no cleanup function: register the "
                           "address of a function of the module");
    runtime.shutdown();
}

// The shipped module, on whatever desktop there is.
class ShippedModule : public ModuleRegistration {
protected:
    ShippedModule() { load(); }

    void load() {
        module.emplace(product("libvorlen_monitor.dll"));
        module->resolve(getModelName, "getVorlenMonitorModelName");
    }

    std::optional<Library> module;
    decltype(getVorlenMonitorModelName)* getModelName = nullptr;
};

TEST_F(ShippedModule, works_between_start_and_end) {
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

TEST_F(ShippedModule, is_not_called_after_it_was_unloaded) {
    EXPECT_NE(runtime.getMonitorWrapper(), nullptr);
    EXPECT_NE(runtime.getWindowEnumWrapper(), nullptr);
    EXPECT_TRUE(runtime.initialize());
    module.reset();
    EXPECT_EQ(runtime.getMonitorWrapper(), nullptr);
    EXPECT_EQ(runtime.getWindowEnumWrapper(), nullptr);
    EXPECT_TRUE(runtime.initialize());
    runtime.shutdown();
}

TEST_F(ShippedModule, works_after_it_was_loaded_again) {
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
