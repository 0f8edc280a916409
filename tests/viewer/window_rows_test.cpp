#include "tools/vorlen-monitor-viewer/window_rows.h"

#include <gmock/gmock.h>

namespace vorlen::viewer {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

tool::WindowRow row(std::uintptr_t handle, const char* title, const char* className,
                    std::optional<std::string> reason) {
    return {reinterpret_cast<void*>(handle), title, className, std::move(reason)};
}

class NotCapturableWindows : public testing::Test {
protected:
    NotCapturableWindows() {
        rows.setWindows({row(0x20, "beta", "Frame", "disabled"),
                         row(0x9, "Alpha", "frame", "cloaked"),
                         row(0x100, "gamma", "Edit", "cloaked")});
    }

    std::vector<std::wstring> titles() const {
        std::vector<std::wstring> titles;
        for (const WindowLine& line : rows.lines()) {
            titles.push_back(line.cells[0]);
        }
        return titles;
    }

    WindowRows rows;
};

TEST_F(NotCapturableWindows, have_a_reason) {
    rows.setWindows(
        {row(0x10, "shown", "Frame", std::nullopt), row(0x1f, "off", "Tool", "disabled")});
    EXPECT_THAT(rows.lines(), ElementsAre(WindowLine{reinterpret_cast<void*>(0x1f),
                                                     {L"off", L"Tool", L"disabled", L"0x1f"}}));
}

TEST_F(NotCapturableWindows, are_reported_when_they_change) {
    const std::vector<tool::WindowRow> windows = {row(1, "a", "A", "disabled")};
    EXPECT_TRUE(rows.setWindows(windows));
    EXPECT_FALSE(rows.setWindows(windows));
    EXPECT_TRUE(rows.setWindows({row(1, "b", "A", "disabled")}));
    EXPECT_TRUE(rows.setWindows({row(1, "b", "A", "cloaked")}));
    EXPECT_TRUE(rows.setWindows({}));
    EXPECT_FALSE(rows.setWindows({row(1, "a capturable one", "A", std::nullopt)}));
}

TEST_F(NotCapturableWindows, are_sorted_without_regard_to_case) {
    EXPECT_THAT(titles(), ElementsAre(L"Alpha", L"beta", L"gamma"));
    rows.setOrder({Column::title, true});
    EXPECT_THAT(titles(), ElementsAre(L"gamma", L"beta", L"Alpha"));
}

TEST_F(NotCapturableWindows, keep_the_system_order_within_equal_cells) {
    rows.setOrder({Column::className, false});
    EXPECT_THAT(titles(), ElementsAre(L"gamma", L"beta", L"Alpha"));
    rows.setOrder({Column::reason, true});
    EXPECT_THAT(titles(), ElementsAre(L"beta", L"Alpha", L"gamma"));
}

TEST_F(NotCapturableWindows, are_sorted_by_handles_as_numbers) {
    rows.setOrder({Column::handle, false});
    EXPECT_THAT(titles(), ElementsAre(L"Alpha", L"beta", L"gamma"));
}

TEST_F(NotCapturableWindows, are_filtered_by_any_cell_in_any_case) {
    rows.setFilter(L"FRAME");
    EXPECT_THAT(titles(), ElementsAre(L"Alpha", L"beta"));
    rows.setFilter(L"cloak");
    EXPECT_THAT(titles(), ElementsAre(L"Alpha", L"gamma"));
    rows.setFilter(L"0x20");
    EXPECT_THAT(titles(), ElementsAre(L"beta"));
    rows.setFilter(L"delta");
    EXPECT_THAT(titles(), IsEmpty());
    rows.setFilter(L"");
    EXPECT_THAT(titles(), ElementsAre(L"Alpha", L"beta", L"gamma"));
}

TEST_F(NotCapturableWindows, stay_filtered_and_sorted_when_they_change) {
    rows.setFilter(L"a");
    rows.setOrder({Column::title, true});
    rows.setWindows({row(1, "aa", "", "x"), row(2, "b", "", "x"), row(3, "ab", "", "x")});
    EXPECT_THAT(titles(), ElementsAre(L"ab", L"aa"));
}

TEST_F(NotCapturableWindows, keep_their_selection_wherever_it_goes) {
    EXPECT_EQ(rows.selected(), std::nullopt);
    rows.select(1); // beta
    rows.setOrder({Column::handle, true});
    EXPECT_EQ(rows.selected(), 1u);
    rows.setOrder({Column::reason, false});
    EXPECT_EQ(rows.selected(), 2u);
    rows.setFilter(L"Edit");
    EXPECT_EQ(rows.selected(), std::nullopt);
    rows.setFilter(L"");
    EXPECT_EQ(rows.selected(), 2u);
    rows.setWindows({row(0x20, "beta, renamed", "Frame", "disabled")});
    EXPECT_EQ(rows.selected(), 0u);
    rows.select(std::nullopt);
    EXPECT_EQ(rows.selected(), std::nullopt);
}

TEST_F(NotCapturableWindows, spell_out_control_characters) {
    rows.setWindows({row(1, "line\nfeed", "", "x")});
    EXPECT_THAT(titles(), ElementsAre(L"line<U+000A>feed"));
}

} // namespace
} // namespace vorlen::viewer
