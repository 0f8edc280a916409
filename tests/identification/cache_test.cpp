#include "monitor/display/monitor_identification.h"
#include "tests/identification/identification_test.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MonitorIdCache : public IdentificationTest {};

TEST_F(MonitorIdCache, keeps_a_text_so_that_wmi_is_asked_once) {
    attach(devicePath(L"VLN0001", L"1"));
    attach(devicePath(L"VLN0002", L"2"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L""));
    EXPECT_EQ(desktop.journal.count("IWbemServices::ExecQuery"), 1u);

    desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L""));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
}

TEST_F(MonitorIdCache, asks_for_all_new_paths_in_one_query) {
    for (const wchar_t* instance : {L"1", L"2", L"3"}) {
        attach(devicePath(L"VLN0001", instance));
        desktop.wmi.add(instanceName(L"VLN0001", instance), instance);
    }
    EXPECT_THAT(identify(), ElementsAre(L"1", L"2", L"3"));
    EXPECT_EQ(desktop.journal.count("CoInitializeEx"), 1u);
    EXPECT_EQ(desktop.journal.count("IWbemServices::ExecQuery"), 1u);
    EXPECT_EQ(desktop.journal.count("IEnumWbemClassObject::Next"), 4u);
}

TEST_F(MonitorIdCache, asks_only_for_the_new_one_of_two_monitors) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    identify();

    desktop.wmi.provider.instances.clear();
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"another text");
    desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    attach(devicePath(L"VLN0002", L"2"));
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L"SN-2"));
    EXPECT_EQ(desktop.journal.count("IWbemServices::ExecQuery"), 1u);
    EXPECT_EQ(desktop.journal.count("IWbemClassObject::Get(SerialNumberID)"), 1u)
        << "the serial number of a known monitor was read";
}

TEST_F(MonitorIdCache, outlives_the_service) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    identify();
    desktop.journal.clear();
    module.cleanup();
    module.init();
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
}

// Paths that are not of a display, or have no separator behind it.
TEST_F(MonitorIdCache, does_not_ask_for_a_path_without_a_prefix) {
    for (const wchar_t* path : {L"", LR"(\\?\MONITOR#VLN0001#1#{0})", LR"(#1#DISPLAY)"}) {
        attach(path);
    }
    // It would begin with an empty prefix.
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L"", L"", L""));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());

    attach(devicePath(L"VLN0001", L"1"));
    EXPECT_THAT(identify(), ElementsAre(L"", L"", L"", L"SN-1"));
}

// The text for one monitor in a library that is loaded, used and unloaded.
std::wstring textOfOneLoading(bool wmiKnowsMonitor) {
    const ModuleUnderTest module;
    SimulatedDesktop desktop{module.image()};
    desktop.monitors.add(display1, wideMode);
    desktop.displayPaths.add(display1, L"Model", devicePath(L"VLN0001", L"1"));
    if (wmiKnowsMonitor) {
        desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    }
    module.init();
    MonitorListItem item{};
    EXPECT_EQ(module.exports->getMonitorList(&item, 1), 1);
    module.cleanup();
    return item.monitorId;
}

// Promise (getMonitorList): WMI is asked once for the serial number of a monitor. One that it did
// not give stays empty until the library is loaded again.
TEST(MonitorIdLookup, asks_again_when_the_library_is_loaded_again) {
    EXPECT_EQ(textOfOneLoading(false), L"");
    EXPECT_EQ(textOfOneLoading(true), L"SN-1");
}

// The cache of the objects that are linked into this program lives as long as the program: only
// texts that no other test uses are of use here.
TEST(MonitorIdLookup, does_not_make_a_path_known) {
    expectBlocksLeft(blocksPerCachedPath);
    const std::wstring path = devicePath(L"VLN0001", L"looked up first");
    EXPECT_EQ(getCachedMonitorId(path), L"");

    Journal journal;
    Redirects redirects(GetModuleHandleW(nullptr), {});
    Wmi wmi(redirects, journal);
    wmi.add(instanceName(L"VLN0001", L"looked up first"), L"SN-1");
    cacheMonitorIds({path});
    EXPECT_EQ(getCachedMonitorId(path), L"SN-1");
}

} // namespace
} // namespace tests
