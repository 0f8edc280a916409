#include "tests/identification/guarded_memory.h"
#include "tests/fixtures/module_test.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

namespace tests {
namespace {

constexpr auto smallest = std::numeric_limits<std::int32_t>::min();
constexpr auto largest = std::numeric_limits<std::int32_t>::max();

// A host's array of so many records, with nothing behind its end.
template <typename Record>
class GuardedRecords {
public:
    explicit GuardedRecords(std::size_t count)
        : untouched(count * sizeof(Record), std::byte{0xC5}),
          memory(untouched.data(), untouched.size()) {}

    Record* data() const { return static_cast<Record*>(static_cast<void*>(memory.data())); }
    const Record& operator[](std::size_t index) const { return data()[index]; }

    bool isUntouched() const {
        return std::equal(untouched.begin(), untouched.end(), memory.data());
    }

private:
    std::vector<std::byte> untouched;
    GuardedMemory memory;
};

// Three monitors and three windows.
class HostileCapacity : public RunningModuleTest {
protected:
    void SetUp() override {
        for (const wchar_t* const title : {L"a", L"b", L"c"}) {
            desktop.windows.add(title);
        }
        RunningModuleTest::SetUp();
    }
};

TEST_F(HostileCapacity, of_none_or_fewer_needs_no_memory_at_all) {
    const GuardedRecords<MonitorListItem> monitors(0);
    const GuardedRecords<WindowListItem> windows(0);
    for (const std::int32_t capacity : {smallest, smallest + 1, -1, 0}) {
        EXPECT_EQ(module.exports->getMonitorList(monitors.data(), capacity), capacity);
        EXPECT_EQ(module.exports->getWindowList(windows.data(), capacity), capacity);
    }
}

TEST_F(HostileCapacity, of_none_or_fewer_leaves_an_array_as_it_is) {
    const GuardedRecords<MonitorListItem> monitors(3);
    const GuardedRecords<WindowListItem> windows(3);
    for (const std::int32_t capacity : {smallest, -1, 0}) {
        EXPECT_EQ(module.exports->getMonitorList(monitors.data(), capacity), capacity);
        EXPECT_EQ(module.exports->getWindowList(windows.data(), capacity), capacity);
    }
    EXPECT_TRUE(monitors.isUntouched());
    EXPECT_TRUE(windows.isUntouched());
}

TEST_F(HostileCapacity, that_is_exact_is_written_to_its_end_and_not_beyond) {
    for (const std::int32_t capacity : {1, 2, 3}) {
        const auto count = static_cast<std::size_t>(capacity);
        const GuardedRecords<MonitorListItem> monitors(count);
        const GuardedRecords<WindowListItem> windows(count);
        EXPECT_EQ(module.exports->getMonitorList(monitors.data(), capacity), capacity);
        EXPECT_EQ(module.exports->getWindowList(windows.data(), capacity), capacity);
        EXPECT_EQ(monitors[count - 1].handle, desktop.monitors.all[count - 1].handle);
        EXPECT_EQ(windows[count - 1].handle, desktop.windows.order[count - 1]);
    }
}

TEST_F(HostileCapacity, beyond_the_array_needs_room_for_what_there_is_only) {
    const GuardedRecords<MonitorListItem> monitors(3);
    const GuardedRecords<WindowListItem> windows(3);
    for (const std::int32_t capacity : {4, largest}) {
        EXPECT_EQ(module.exports->getMonitorList(monitors.data(), capacity), 3);
        EXPECT_EQ(module.exports->getWindowList(windows.data(), capacity), 3);
    }
    EXPECT_EQ(monitors[2].handle, desktop.monitors.all[2].handle);
    EXPECT_EQ(windows[2].handle, desktop.windows.order[2]);
}

class HostileModelName : public RunningModuleTest {};

TEST_F(HostileModelName, of_no_length_is_not_read_at_all) {
    const GuardedMemory nothing("", 0);
    module.exports->setVorlenMonitorModelName("Kit", 3);
    module.exports->setVorlenMonitorModelName(reinterpret_cast<const char*>(nothing.data()), 0);
    EXPECT_EQ(module.runtime.monitorModelName(), "");
}

TEST_F(HostileModelName, without_a_terminator_is_read_to_its_end_and_not_beyond) {
    std::string bytes(4'096, 'n');
    bytes[1'000] = '\0';
    bytes[4'095] = '\xFF';
    const GuardedMemory name(bytes.data(), bytes.size());
    module.exports->setVorlenMonitorModelName(reinterpret_cast<const char*>(name.data()), 4'096);
    EXPECT_EQ(module.runtime.monitorModelName(), bytes);
    EXPECT_EQ(module.exports->getVorlenMonitorModelName(), std::string(1'000, 'n'));
}

} // namespace
} // namespace tests
