#include "tests/fixtures/module_test.h"
#include "tests/fixtures/service_members.h"

#include <algorithm>

namespace tests {
namespace {

constexpr std::size_t units = 128;

struct Field {
    const char* name;
    std::wstring vorlen::ui::MonitorInfo::*cached;
    VLChar16 (MonitorListItem::*exported)[units];
};

// Texts longer than any that the display configuration knows are put into the service's cache.
class ExportedText : public RunningModuleTest, public testing::WithParamInterface<Field> {
protected:
    // The field as it is written over a field full of a letter.
    const VLChar16* copyOf(const std::wstring& text) {
        cachedMonitors(service()).at(0).*GetParam().cached = text;
        std::fill_n(item.*GetParam().exported, units, L'#');
        EXPECT_EQ(module.exports->getMonitorList(&item, 1), 1);
        return item.*GetParam().exported;
    }

    MonitorListItem item{};
};

// The whole field: the first letters of the text, and zeros behind them.
std::wstring fieldOf(const std::wstring& text, std::size_t length) {
    std::wstring field = text.substr(0, length);
    field.resize(units, L'\0');
    return field;
}

// A text without repetition, so that a shifted copy shows.
std::wstring lettersOf(std::size_t length) {
    std::wstring text;
    for (std::size_t i = 0; i < length; ++i) {
        text += static_cast<wchar_t>(0x3041 + i);
    }
    return text;
}

TEST_P(ExportedText, is_filled_up_with_zeros) {
    for (const std::size_t length : {0u, 1u, 5u, 126u}) {
        const std::wstring text = lettersOf(length);
        EXPECT_EQ(std::wstring(copyOf(text), units), fieldOf(text, length)) << length;
    }
}

TEST_P(ExportedText, of_127_units_fits_with_its_terminating_zero) {
    const std::wstring text = lettersOf(127);
    EXPECT_EQ(std::wstring(copyOf(text), units), fieldOf(text, 127));
}

TEST_P(ExportedText, is_cut_at_127_units) {
    for (const std::size_t length : {128u, 129u, 200u, 1000u}) {
        const std::wstring text = lettersOf(length);
        EXPECT_EQ(std::wstring(copyOf(text), units), fieldOf(text, 127)) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Fields, ExportedText,
                         testing::Values(Field{"deviceName", &vorlen::ui::MonitorInfo::deviceName,
                                               &MonitorListItem::deviceName},
                                         Field{"friendlyName",
                                               &vorlen::ui::MonitorInfo::friendlyName,
                                               &MonitorListItem::friendlyName},
                                         Field{"monitorId", &vorlen::ui::MonitorInfo::monitorId,
                                               &MonitorListItem::monitorId}),
                         [](const auto& field) { return std::string(field.param.name); });

} // namespace
} // namespace tests
