#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

class NameExports : public RunningModuleTest {
protected:
    void SetUp() override {
        RunningModuleTest::SetUp();
        module.runtime.setMonitorName("the name");
        module.runtime.setMonitorModelName("the model");
    }
};

TEST_F(NameExports, hand_out_the_runtimes_own_texts) {
    EXPECT_STREQ(module.exports->getMonitorModelName(), "the name");
    EXPECT_EQ(module.exports->getMonitorModelName(), module.runtime.monitorName().c_str());
    EXPECT_STREQ(module.exports->getVorlenMonitorModelName(), "the model");
    EXPECT_EQ(module.exports->getVorlenMonitorModelName(),
              module.runtime.monitorModelName().c_str());
}

TEST_F(NameExports, ask_the_core_anew_at_each_call) {
    module.exports->getMonitorModelName();
    module.exports->getMonitorModelName();
    module.exports->getVorlenMonitorModelName();
    EXPECT_THAT(core.names(), ElementsAre("Instance", "GetMonitorName", "Instance",
                                          "GetMonitorName", "Instance", "GetMonitorModelName"));
}

TEST_F(NameExports, give_the_model_name_without_reading_the_monitors_however_old_they_are) {
    desktop.clock.advance(1h);
    EXPECT_STREQ(module.exports->getVorlenMonitorModelName(), "the model");
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(NameExports, give_the_model_name_without_reading_the_monitors_even_if_there_are_none) {
    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    desktop.journal.clear();
    EXPECT_STREQ(module.exports->getVorlenMonitorModelName(), "the model");
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

TEST_F(NameExports, give_the_current_monitors_name_after_the_monitors_were_read_anew) {
    module.runtime.setMonitorName("");
    module.runtime.makeModelKnown("Kit");
    desktop.displayPaths.all[1].friendlyName = L"Kit 32";
    desktop.clock.advance(500ms);
    EXPECT_STREQ(module.exports->getMonitorModelName(), "Kit 32");
}

class ModelNameSetter : public RunningModuleTest {};

TEST_F(ModelNameSetter, takes_as_many_bytes_as_it_is_told) {
    module.exports->setVorlenMonitorModelName("Kit 32 and more", 6);
    EXPECT_EQ(module.runtime.monitorModelName(), "Kit 32");
}

TEST_F(ModelNameSetter, keeps_zero_bytes_inside_and_all_other_bytes) {
    const char bytes[] = {'a', '\0', '\xE9', '\0', '\xFF'};
    module.exports->setVorlenMonitorModelName(bytes, sizeof(bytes));
    EXPECT_EQ(module.runtime.monitorModelName(), std::string(bytes, sizeof(bytes)));
}

TEST_F(ModelNameSetter, copies_the_bytes) {
    std::string name = "Kit";
    module.exports->setVorlenMonitorModelName(name.data(), 3);
    name = "XXX";
    EXPECT_EQ(module.runtime.monitorModelName(), "Kit");
}

TEST_F(ModelNameSetter, takes_an_empty_name) {
    module.exports->setVorlenMonitorModelName("Kit", 3);
    module.exports->setVorlenMonitorModelName("ignored", 0);
    EXPECT_EQ(module.runtime.monitorModelName(), "");
    EXPECT_THAT(core.texts, ElementsAre("Kit", ""));
}

TEST_F(ModelNameSetter, refuses_a_negative_length_and_keeps_the_name) {
    module.exports->setVorlenMonitorModelName("Kit", 3);
    for (const std::int32_t length : {-1, -3, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_THROW(module.exports->setVorlenMonitorModelName("text", length), std::length_error);
    }
    EXPECT_EQ(module.runtime.monitorModelName(), "Kit");
}

TEST_F(ModelNameSetter, refuses_a_negative_length_also_without_a_text) {
    module.exports->setVorlenMonitorModelName("Kit", 3);
    EXPECT_THROW(module.exports->setVorlenMonitorModelName(nullptr, -1), std::length_error);
    EXPECT_EQ(module.runtime.monitorModelName(), "Kit");
}

TEST_F(ModelNameSetter, takes_an_empty_name_without_a_text) {
    module.exports->setVorlenMonitorModelName("Kit", 3);
    module.exports->setVorlenMonitorModelName(nullptr, 0);
    EXPECT_THAT(core.texts, ElementsAre("Kit", ""));
}

TEST_F(ModelNameSetter, sets_nothing_but_the_model_name_and_reads_no_monitor) {
    desktop.clock.advance(1h);
    module.exports->setVorlenMonitorModelName("Kit", 3);
    EXPECT_THAT(core.names(), ElementsAre("Instance", "SetMonitorModelName"));
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

} // namespace
} // namespace tests
