#include "tests/fixtures/guarded_memory.h"
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

    void setModelName(const GuardedMemory& name, std::int32_t length) const {
        module.exports->setVorlenMonitorModelName(reinterpret_cast<const char*>(name.data()),
                                                  length);
    }
};

// Promise (Names and rectangle): `getMonitorModelName` returns the name of the current monitor, and
// not its model name, which `getVorlenMonitorModelName` returns. Both texts are the runtime's own.
TEST_F(NameExports, return_the_runtimes_name_and_model_name) {
    EXPECT_STREQ(module.exports->getMonitorModelName(), "the name");
    EXPECT_EQ(module.exports->getMonitorModelName(), module.runtime.monitorName().c_str());
    EXPECT_STREQ(module.exports->getVorlenMonitorModelName(), "the model");
    EXPECT_EQ(module.exports->getVorlenMonitorModelName(),
              module.runtime.monitorModelName().c_str());
}

TEST_F(NameExports, return_the_name_that_a_refresh_finds) {
    module.runtime.setMonitorName("");
    module.runtime.makeModelKnown("Kit");
    desktop.displayPaths.all[1].friendlyName = L"Kit 32";
    desktop.clock.advance(500ms);
    EXPECT_STREQ(module.exports->getMonitorModelName(), "Kit 32");
}

// Promise (Names and rectangle): `getVorlenMonitorModelName` never reads the monitors, however old
// their list is and even if it is empty.
TEST_F(NameExports, return_the_model_name_without_reading_the_monitors) {
    desktop.clock.advance(1h);
    EXPECT_STREQ(module.exports->getVorlenMonitorModelName(), "the model");
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());

    desktop.monitors.all.clear();
    module.exports->updateMonitorList();
    desktop.journal.clear();
    EXPECT_STREQ(module.exports->getVorlenMonitorModelName(), "the model");
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

// Promise (Names and rectangle): `setVorlenMonitorModelName` copies exactly `length` bytes. The
// name need not be terminated, and zero bytes inside are kept.
TEST_F(NameExports, copy_a_model_name_of_exactly_its_length) {
    std::string bytes(4'096, 'n');
    bytes[1'000] = '\0';
    bytes[4'095] = '\xFF';
    setModelName(GuardedMemory(bytes.data(), bytes.size()), 4'096);
    EXPECT_EQ(module.runtime.monitorModelName(), bytes);
    setModelName(GuardedMemory("Kit 32 and more", 15), 6);
    EXPECT_EQ(module.runtime.monitorModelName(), "Kit 32");
}

TEST_F(NameExports, set_an_empty_model_name_without_reading_it) {
    setModelName(GuardedMemory("", 0), 0);
    module.exports->setVorlenMonitorModelName(nullptr, 0);
    EXPECT_THAT(core.texts, ElementsAre("", ""));
}

// Promise (Names and rectangle): A negative length of `setVorlenMonitorModelName` leaves as
// `std::length_error`, also without a name. The model name stays as it was.
TEST_F(NameExports, refuse_a_negative_length_and_keep_the_model_name) {
    for (const std::int32_t length : {-1, -3, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_THROW(module.exports->setVorlenMonitorModelName("text", length), std::length_error);
        EXPECT_THROW(module.exports->setVorlenMonitorModelName(nullptr, length), std::length_error);
    }
    EXPECT_EQ(module.runtime.monitorModelName(), "the model");
}

TEST_F(NameExports, set_nothing_but_the_model_name_and_read_no_monitor) {
    desktop.clock.advance(1h);
    module.exports->setVorlenMonitorModelName("Kit", 3);
    EXPECT_THAT(core.names(), ElementsAre("Instance", "SetMonitorModelName"));
    EXPECT_THAT(desktop.displayCalls(), IsEmpty());
}

} // namespace
} // namespace tests
