#include "tests/runtime/runtime_fixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vorlen::VORLEN_MONITOR_INFO;

// The core of the shipped runtime, made without known models.
class Core : public testing::Test {
protected:
    Core() { models.unset(); }

    void addMonitor(const std::string& deviceName, const std::string& friendlyName) const {
        core.add({deviceName, friendlyName, "id", 1, 2, 3, 4, 5});
    }

    EnvironmentVariable models{L"VORLEN_KIT_MODELS"};
    const LoadedCore core;
};

TEST_F(Core, knows_nothing_at_first) {
    EXPECT_THAT(core.items(), IsEmpty());
    EXPECT_EQ(core.index(), -1);
    EXPECT_EQ(core.name(), "");
    EXPECT_EQ(core.modelName(), "");
    EXPECT_THAT(core.models("device"), IsEmpty());
}

TEST_F(Core, keeps_every_field_of_monitors_in_the_order_of_adding) {
    addMonitor("second", "B");
    addMonitor("first", "A");
    ASSERT_EQ(core.items().size(), 2u);
    EXPECT_EQ(core.items()[0].deviceName, "second");
    const VORLEN_MONITOR_INFO& monitor = core.items()[1];
    EXPECT_EQ(monitor.deviceName, "first");
    EXPECT_EQ(monitor.friendlyName, "A");
    EXPECT_EQ(monitor.monitorId, "id");
    EXPECT_EQ(monitor.x, 1);
    EXPECT_EQ(monitor.y, 2);
    EXPECT_EQ(monitor.width, 3);
    EXPECT_EQ(monitor.height, 4);
    EXPECT_EQ(monitor.refreshRate, 5);
}

TEST_F(Core, forgets_monitors_when_the_list_is_cleared) {
    core.makeKnown("A");
    addMonitor("first", "A");
    core.clear();
    EXPECT_THAT(core.items(), IsEmpty());
    EXPECT_EQ(core.index(), -1);
    EXPECT_THAT(core.models("first"), IsEmpty());
    EXPECT_EQ(core.name(), "");
    EXPECT_EQ(core.modelName(), "");
}

TEST_F(Core, keeps_models_and_names_when_the_list_is_cleared) {
    core.makeKnown("A");
    core.setName("name");
    core.setModelName("model");
    core.clear();
    addMonitor("first", "A");
    EXPECT_EQ(core.index(), 0);
    EXPECT_EQ(core.name(), "name");
    EXPECT_EQ(core.modelName(), "model");
}

// Promise (Runtime and its log): The current monitor is the first one whose friendly name contains
// a known model, letter for letter.
TEST_F(Core, recognises_the_first_monitor_that_carries_a_known_model) {
    core.makeKnown("Kit");
    addMonitor("one", "other");
    addMonitor("two", "my Kit 32");
    addMonitor("three", "Kit");
    EXPECT_EQ(core.index(), 1);
    EXPECT_EQ(core.name(), "my Kit 32");
    EXPECT_EQ(core.modelName(), "Kit");
    EXPECT_THAT(core.models("one"), IsEmpty());
    EXPECT_THAT(core.models("two"), ElementsAre("Kit"));
    EXPECT_THAT(core.models("three"), ElementsAre("Kit"));
}

TEST_F(Core, lists_the_models_of_a_monitor_in_the_order_given) {
    core.makeKnown("Kit 32");
    core.makeKnown("Kit");
    core.makeKnown("other");
    addMonitor("one", "Kit 32");
    EXPECT_THAT(core.models("one"), ElementsAre("Kit 32", "Kit"));
    EXPECT_EQ(core.modelName(), "Kit 32");
}

TEST_F(Core, distinguishes_upper_and_lower_case) {
    core.makeKnown("Kit");
    addMonitor("one", "kit KIT");
    EXPECT_EQ(core.index(), -1);
}

TEST_F(Core, recognises_listed_monitors_by_a_new_model) {
    addMonitor("one", "other");
    addMonitor("two", "Kit");
    core.makeKnown("Kit");
    EXPECT_EQ(core.index(), 1);
    core.makeKnown("other");
    EXPECT_EQ(core.index(), 0);
    EXPECT_THAT(core.models("one"), ElementsAre("other"));
}

TEST_F(Core, keeps_a_model_once_that_is_made_known_twice) {
    core.makeKnown("Kit");
    core.makeKnown("Kit");
    addMonitor("one", "Kit");
    EXPECT_THAT(core.models("one"), ElementsAre("Kit"));
}

TEST_F(Core, answers_for_the_first_monitor_of_a_device_name) {
    core.makeKnown("Kit");
    addMonitor("same", "other");
    addMonitor("same", "Kit");
    EXPECT_THAT(core.models("same"), IsEmpty());
}

TEST_F(Core, prefers_names_that_were_set_to_those_of_the_current_monitor) {
    core.makeKnown("Kit");
    addMonitor("one", "Kit 32");
    core.setName("name");
    core.setModelName(std::string("mo\0del", 6));
    EXPECT_EQ(core.name(), "name");
    EXPECT_EQ(core.modelName(), std::string("mo\0del", 6));
    core.setName("");
    core.setModelName("");
    EXPECT_EQ(core.name(), "Kit 32");
    EXPECT_EQ(core.modelName(), "Kit");
}

TEST_F(Core, knows_no_camera) {
    core.makeKnown("Kit");
    EXPECT_EQ(core.camera("Kit"), "");
}

TEST_F(Core, refuses_an_empty_model_in_one_line) {
    const TemporaryFolder folder;
    const CapturedStandardError standardError(folder.path / "standard error");
    core.makeKnown("");
    addMonitor("one", "any name");
    EXPECT_EQ(core.index(), -1);
    EXPECT_EQ(standardError.text(), "vorlen_runtime: an empty model name was given: give a name "
                                    "of at least one character\r\n");
}

} // namespace
} // namespace tests
