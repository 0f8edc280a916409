#include "tests/fixtures/live_list.h"
#include "tests/fixtures/log_recorder.h"
#include "tests/fixtures/module_test.h"
#include "tests/soak/window_history.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string_view>

namespace tests {
namespace {

// Another history with every other seed.
std::uint32_t seed() {
    char chosen[32]{};
    std::uint32_t value = 20'260'101;
    if (GetEnvironmentVariableA("VORLEN_SOAK_SEED", chosen, sizeof(chosen)) != 0) {
        const std::string_view text = chosen;
        const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
        if (end.ec != std::errc{} || end.ptr != text.data() + text.size()) {
            throw std::invalid_argument("VORLEN_SOAK_SEED is to be a number from 0 to 4294967295, "
                                        "not \"" +
                                        std::string(text) + '"');
        }
    }
    return value;
}

class MillionEvents : public ModuleTest {
protected:
    void registerBox(HWND box) {
        module.windowEnumWrapper().registerWindowComboBox(box);
        model.registerBox(box);
    }

    void let(int events) {
        for (int i = 0; i < events; ++i) {
            history.happen();
        }
        desktop.journal.clear();
        desktop.comboBoxes.messages.clear();
    }

    void expectSameRecords() {
        const int count = module.exports->getWindowList(nullptr, 0);
        ASSERT_EQ(static_cast<std::size_t>(count), model.listed.size());
        records.resize(model.listed.size());
        ASSERT_EQ(module.exports->getWindowList(records.data(), count), count);
        for (std::size_t i = 0; i < records.size(); ++i) {
            const WindowModel::Entry& entry = model.listed[i];
            ASSERT_EQ(records[i].handle, entry.handle) << i;
            ASSERT_EQ(records[i].title, entry.title.substr(0, 127)) << i;
            ASSERT_EQ(records[i].className, entry.className.substr(0, 127)) << i;
            ASSERT_EQ(module.windowEnumWrapper().getWindowHandle(static_cast<std::int32_t>(i)),
                      entry.handle);
        }
        ASSERT_EQ(module.windowEnumWrapper().getWindowHandle(count), nullptr);
    }

    void expectSameSet() const {
        const WindowList& list = *liveListOf(*module.exports->getMonitorData());
        const auto& set = handleSetOf(list);
        ASSERT_EQ(set.size(), model.listed.size());
        ASSERT_TRUE(std::all_of(model.listed.begin(), model.listed.end(),
                                [&](const auto& entry) { return set.contains(entry.handle); }));
    }

    void expectSameBoxes() {
        for (const WindowModel::Box& box : model.boxes) {
            ASSERT_EQ(desktop.comboBoxes.entries(box.handle), box.entries) << box.handle;
        }
        ASSERT_EQ(log.lines.size(), model.refusals);
    }

    WindowModel model{desktop.windows};
    WindowHistory history{desktop, model, seed()};
    LogRecorder log{module.image(), desktop.journal};
    std::vector<WindowListItem> records;
};

TEST_F(MillionEvents, leave_lists_and_combo_boxes_as_in_a_plain_model) {
    SCOPED_TRACE("VORLEN_SOAK_SEED=" + std::to_string(seed()));
    history.addWindows(5'000);
    module.init();
    model.readDesktop();
    const HWND first = desktop.comboBoxes.add();
    const HWND twice = desktop.comboBoxes.add();
    registerBox(first);
    for (int thousand = 0; thousand < 1'000; ++thousand) {
        SCOPED_TRACE("after " + std::to_string(thousand) + " thousand events");
        if (thousand == 200 || thousand == 700) {
            registerBox(twice);
        }
        if (thousand == 500) {
            registerBox(desktop.comboBoxes.add({L"left over"}));
        }
        let(1'000);
        ASSERT_NO_FATAL_FAILURE(expectSameRecords());
        ASSERT_NO_FATAL_FAILURE(expectSameSet());
        ASSERT_NO_FATAL_FAILURE(expectSameBoxes());
    }
    // The history was one in which something happened.
    EXPECT_GT(model.entered, 5'000u);
    EXPECT_GT(model.left, 5'000u);
    EXPECT_GT(model.listed.size(), 500u);
}

} // namespace
} // namespace tests
