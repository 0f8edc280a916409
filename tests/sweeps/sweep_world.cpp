#include "tests/sweeps/sweep_world.h"

#include "monitor/service/ui_records.h"
#include "tests/fixtures/display_modes.h"
#include "tests/fixtures/live_list.h"
#include "tests/fixtures/service_members.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace tests {

using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAreArray;

namespace {

constexpr const char* kitName = "Vorlen One with a name that needs memory";
constexpr const wchar_t* kitNameWide = L"Vorlen One with a name that needs memory";

std::wstring pathOf(const std::wstring& hardware, std::size_t instance) {
    return LR"(\\?\DISPLAY#)" + hardware + L"#" + std::to_wstring(instance) + L"#{e6f07b5f}";
}

std::wstring instanceOf(const std::wstring& hardware, std::size_t instance) {
    return LR"(DISPLAY\)" + hardware + LR"(\)" + std::to_wstring(instance) + L"_0";
}

} // namespace

SweepWorld::SweepWorld() {
    module.runtime.makeModelKnown("Vorlen");
    desktop.addMonitor(display2, L"Office with a name that needs memory", smallMode);
    desktop.addMonitor(display1, kitNameWide, wideMode);
    desktop.windows.add(L"First window");
    desktop.windows.add(L"Second window", L"ApplicationFrameWindow");
    desktop.windows.add(L"Third window with a long title");
    lateWindow = desktop.windows.add(L"Late window with a long title").handle;
    desktop.windows.find(lateWindow)->alive = false;
    windowBox = desktop.comboBoxes.add();
    monitorBox = desktop.comboBoxes.add();
}

SweepWorld::~SweepWorld() {
    module.unload();
}

void SweepWorld::start() {
    for (const HWND window : desktop.windows.order) {
        desktop.windows.find(window)->alive = window != lateWindow;
    }
    makeIdentificationsUnknown();
    module.init();
    module.windowEnumWrapper().registerWindowComboBox(windowBox);
    module.windowEnumWrapper().registerMonitorComboBox(monitorBox);
    windowBoxFollows = true;
    log.lines.clear();
    desktop.comboBoxes.messages.clear();
    desktop.displayPaths.requests.clear();
    core.texts.clear();
}

void SweepWorld::makeIdentificationsUnknown() {
    ++lastInstance;
    const std::wstring hardware[] = {L"OFF0001", L"VLN0001"};
    desktop.wmi.provider.instances.clear();
    for (std::size_t i = 0; i < desktop.displayPaths.all.size(); ++i) {
        desktop.displayPaths.all[i].devicePath = pathOf(hardware[i], lastInstance);
        desktop.wmi.add(instanceOf(hardware[i], lastInstance), L"Serial number " + hardware[i]);
    }
}

void SweepWorld::stop() {
    module.cleanup();
    EXPECT_EQ(module.exports->getMonitorData(), nullptr);
    EXPECT_EQ(desktop.eventHooks.installed(), 0u);
    EXPECT_THAT(desktop.wmi.outstanding(), IsEmpty());
    desktop.eventHooks.all.clear();
    desktop.journal.clear();
}

std::vector<HWND> SweepWorld::listedWindows() const {
    std::vector<HWND> windows;
    while (const HWND window = module.windowEnumWrapper().getWindowHandle(
               static_cast<std::int32_t>(windows.size()))) {
        windows.push_back(window);
    }
    return windows;
}

// The cache and the core's list name the same monitors at the same indexes, as far as they go, and
// differ by the one at most that was being added; the live list, its handles, the snapshot and the
// combo box show the same windows.
void SweepWorld::expectAgreement() {
    vorlen::MonitorData* const service = module.exports->getMonitorData();
    if (service == nullptr) {
        return;
    }
    const auto& cached = cachedMonitors(*service);
    const auto& items = module.runtime.monitorItems();
    EXPECT_GE(cached.size(), items.size());
    EXPECT_LE(cached.size(), items.size() + 1);
    for (std::size_t i = 0; i < items.size() && i < cached.size(); ++i) {
        EXPECT_EQ(std::wstring(items[i].deviceName.begin(), items[i].deviceName.end()),
                  cached[i].deviceName);
    }
    const WindowList* const list = liveListOf(*service);
    if (list == nullptr) {
        return;
    }
    const std::vector<HWND> handles = listedWindows();
    EXPECT_THAT(handleSetOf(*list), UnorderedElementsAreArray(handles));
    std::vector<HWND> snapshot;
    std::vector<std::wstring> titles;
    for (const vorlen::ui::WindowInfo& window : module.monitorWrapper().getWindowList()) {
        snapshot.push_back(window.hwnd);
        titles.push_back(window.title);
    }
    EXPECT_THAT(snapshot, ElementsAreArray(handles));
    if (windowBoxFollows) {
        EXPECT_THAT(desktop.comboBoxes.entries(windowBox), ElementsAreArray(titles));
    }
}

void SweepWorld::expectRightAnswers() {
    if (module.exports->getMonitorData() == nullptr) {
        windowBoxFollows = false;
        module.init();
    }
    if (liveListOf(*module.exports->getMonitorData()) == nullptr) {
        windowBoxFollows = false;
        module.monitorWrapper().useWindowList(true);
    }
    expectRightMonitors();
    expectRightWindows();
    expectAgreement();
}

void SweepWorld::expectRightMonitors() {
    MonitorListItem items[3]{};
    ASSERT_EQ(module.exports->getMonitorList(items, 3), 2);
    for (std::size_t i = 0; i < 2; ++i) {
        const SimulatedMonitor& monitor = desktop.monitors.all[i];
        EXPECT_EQ(items[i].handle, monitor.handle);
        EXPECT_EQ(items[i].deviceName, monitor.deviceName);
        EXPECT_EQ(items[i].friendlyName, desktop.displayPaths.all[i].friendlyName);
        EXPECT_EQ(std::wstring(items[i].monitorId),
                  i == 0 ? L"Serial number OFF0001" : L"Serial number VLN0001");
        EXPECT_EQ(items[i].x, monitor.mode->x);
        EXPECT_EQ(items[i].y, monitor.mode->y);
        EXPECT_EQ(items[i].width, static_cast<std::int32_t>(monitor.mode->width));
        EXPECT_EQ(items[i].height, static_cast<std::int32_t>(monitor.mode->height));
        EXPECT_EQ(items[i].refreshRate, static_cast<std::int32_t>(monitor.mode->frequency));
    }
    EXPECT_THAT(module.runtime.monitorItems(), SizeIs(2));
    EXPECT_TRUE(module.exports->checkMonitorStatus());
    EXPECT_EQ(module.exports->getLastMonitorStatus(), 16);
    EXPECT_STREQ(module.exports->getMonitorModelName(), kitName);
    EXPECT_EQ(module.exports->getMonitorRect().width, 3840);
}

void SweepWorld::expectRightWindows() {
    std::vector<HWND> alive;
    for (const HWND window : desktop.windows.order) {
        const bool isAlive = desktop.windows.find(window)->alive;
        desktop.eventHooks.deliver(isAlive ? EVENT_OBJECT_SHOW : EVENT_OBJECT_DESTROY, window);
        if (isAlive) {
            alive.push_back(window);
        }
    }
    EXPECT_THAT(listedWindows(), UnorderedElementsAreArray(alive));
}

} // namespace tests
