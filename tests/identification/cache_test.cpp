#include "monitor/display/monitor_identification.h"
#include "tests/identification/identification_test.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MonitorIdCache : public IdentificationTest {};

TEST_F(MonitorIdCache, keeps_a_text_so_that_wmi_is_asked_for_a_path_once) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
}

TEST_F(MonitorIdCache, a_path_without_an_instance_stays_empty_and_is_not_asked_for_again) {
    attach(devicePath(L"VLN0001", L"1"));
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_EQ(desktop.journal.count("IWbemServices::ExecQuery"), 1u);

    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
}

TEST_F(MonitorIdCache, one_query_serves_all_new_paths) {
    for (const wchar_t* instance : {L"1", L"2", L"3"}) {
        attach(devicePath(L"VLN0001", instance));
        desktop.wmi.add(instanceName(L"VLN0001", instance), instance);
    }
    EXPECT_THAT(identify(), ElementsAre(L"1", L"2", L"3"));
    EXPECT_EQ(desktop.journal.count("CoInitializeEx"), 1u);
    EXPECT_EQ(desktop.journal.count("IWbemServices::ExecQuery"), 1u);
}

TEST_F(MonitorIdCache, a_new_monitor_is_asked_for_alone) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    identify();

    desktop.wmi.provider.instances.clear();
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"another text");
    desktop.wmi.add(instanceName(L"VLN0002", L"2"), L"SN-2");
    attach(devicePath(L"VLN0002", L"2"));
    EXPECT_THAT(identify(), ElementsAre(L"SN-1", L"SN-2"));
    EXPECT_EQ(desktop.journal.count("IWbemServices::ExecQuery"), 1u);
    // What belongs to a known monitor is not even read.
    EXPECT_EQ(desktop.journal.count("IWbemClassObject::Get(SerialNumberID)"), 1u);
}

TEST_F(MonitorIdCache, a_monitor_that_comes_back_is_not_asked_for_again) {
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    identify();
    const std::wstring name = desktop.monitors.all[0].deviceName;
    desktop.monitors.all.clear();
    desktop.displayPaths.all.clear();
    EXPECT_THAT(identify(), IsEmpty());

    desktop.monitors.add(name, DisplayMode{0, 0, 1920, 1080, 60});
    desktop.displayPaths.add(name, L"Model", devicePath(L"VLN0001", L"1"));
    EXPECT_THAT(identify(), ElementsAre(L"SN-1"));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
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
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
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

TEST(MonitorIdCacheOfALoading, keeps_no_empty_text_for_the_next_one) {
    EXPECT_EQ(textOfOneLoading(false), L"");
    EXPECT_EQ(textOfOneLoading(true), L"SN-1");
}

// Paths that are none of a display, or of one without the separator behind it.
class PathWithoutPrefix : public IdentificationTest,
                          public testing::WithParamInterface<const wchar_t*> {};

TEST_P(PathWithoutPrefix, is_not_asked_for_and_its_text_is_empty) {
    attach(GetParam());
    // It would begin with an empty prefix.
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
    EXPECT_THAT(identify(), ElementsAre(L""));
    EXPECT_THAT(desktop.wmi.calls(), IsEmpty());
}

TEST_P(PathWithoutPrefix, does_not_keep_other_monitors_from_being_asked_for) {
    attach(GetParam());
    attach(devicePath(L"VLN0001", L"1"));
    desktop.wmi.add(instanceName(L"VLN0001", L"1"), L"SN-1");
    EXPECT_THAT(identify(), ElementsAre(L"", L"SN-1"));
}

INSTANTIATE_TEST_SUITE_P(of, PathWithoutPrefix,
                         testing::Values(L"", LR"(\\?\MONITOR#VLN0001#1#{0})",
                                         LR"(\\?\display#VLN0001#1#{0})", LR"(\\?\DISPLAY)",
                                         LR"(#1#DISPLAY)"));

// The cache of the objects that are linked into this program lives as long as the program: only
// texts that no other test uses are of use here.
TEST(MonitorIdLookup, gives_an_empty_text_for_a_path_that_was_never_asked_for) {
    EXPECT_EQ(getCachedMonitorId(devicePath(L"VLN0001", L"never asked for")), L"");
    EXPECT_EQ(getCachedMonitorId(L""), L"");
}

// Were it kept, the second call could not ask.
TEST(MonitorIdLookup, does_not_make_the_path_a_known_one) {
    expectBlocksLeft(blocksPerCachedPath);
    const std::wstring path = devicePath(L"VLN0001", L"looked up first");
    getCachedMonitorId(path);

    Journal journal;
    Redirects redirects(GetModuleHandleW(nullptr), {});
    Wmi wmi(redirects, journal);
    wmi.add(instanceName(L"VLN0001", L"looked up first"), L"SN-1");
    cacheMonitorIds({path});
    EXPECT_EQ(getCachedMonitorId(path), L"SN-1");
}

TEST(MonitorIdLookup, skips_empty_paths_and_asks_for_nothing_when_no_path_is_left) {
    Journal journal;
    Redirects redirects(GetModuleHandleW(nullptr), {});
    const Wmi wmi(redirects, journal);
    cacheMonitorIds({});
    cacheMonitorIds({L"", L""});
    cacheMonitorIds({L"path of no display"});
    EXPECT_THAT(wmi.calls(), IsEmpty());
}

} // namespace
} // namespace tests
