#include "tests/runtime/captured_standard_error.h"
#include "tests/runtime/logger_fixture.h"
#include "tests/fixtures/shipped_runtime.h"

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

TEST_F(Core, is_one_object) {
    EXPECT_EQ(&core.instance(), &core.instance());
}

TEST_F(Core, knows_nothing_at_first) {
    EXPECT_THAT(core.items(), IsEmpty());
    EXPECT_EQ(core.index(), -1);
    EXPECT_EQ(core.name(), "");
    EXPECT_EQ(core.modelName(), "");
    EXPECT_THAT(core.models("device"), IsEmpty());
}

TEST_F(Core, keeps_monitors_with_every_field_in_the_order_in_which_they_were_added) {
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

TEST_F(Core, forgets_the_monitors_when_the_list_is_cleared) {
    core.makeKnown("A");
    addMonitor("first", "A");
    core.clear();
    EXPECT_THAT(core.items(), IsEmpty());
    EXPECT_EQ(core.index(), -1);
    EXPECT_THAT(core.models("first"), IsEmpty());
    EXPECT_EQ(core.name(), "");
    EXPECT_EQ(core.modelName(), "");
}

TEST_F(Core, keeps_its_known_models_and_set_names_when_the_list_is_cleared) {
    core.makeKnown("A");
    core.setName("name");
    core.setModelName("model");
    core.clear();
    addMonitor("first", "A");
    EXPECT_EQ(core.index(), 0);
    EXPECT_EQ(core.name(), "name");
    EXPECT_EQ(core.modelName(), "model");
}

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

TEST_F(Core, lists_every_known_model_that_a_monitor_carries_in_the_order_of_becoming_known) {
    core.makeKnown("Kit 32");
    core.makeKnown("Kit");
    core.makeKnown("other");
    addMonitor("one", "Kit 32");
    EXPECT_THAT(core.models("one"), ElementsAre("Kit 32", "Kit"));
    EXPECT_EQ(core.modelName(), "Kit 32");
}

TEST_F(Core, tells_the_letters_of_a_model_apart) {
    core.makeKnown("Kit");
    addMonitor("one", "kit KIT");
    EXPECT_EQ(core.index(), -1);
}

TEST_F(Core, looks_for_a_model_in_the_monitors_that_are_there_already) {
    addMonitor("one", "other");
    addMonitor("two", "Kit");
    core.makeKnown("Kit");
    EXPECT_EQ(core.index(), 1);
    core.makeKnown("other");
    EXPECT_EQ(core.index(), 0);
    EXPECT_THAT(core.models("one"), ElementsAre("other"));
}

TEST_F(Core, takes_a_model_once_however_often_it_is_made_known) {
    core.makeKnown("Kit");
    core.makeKnown("Kit");
    addMonitor("one", "Kit");
    EXPECT_THAT(core.models("one"), ElementsAre("Kit"));
}

TEST_F(Core, answers_for_the_first_of_two_monitors_with_one_device_name) {
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

TEST_F(Core, refuses_an_empty_model_with_one_line_on_standard_error) {
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
