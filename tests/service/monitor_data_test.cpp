#include "monitor/service/monitor_data.h"
#include "runtime/core.h"
#include "simulation/simulated_desktop.h"
#include "tests/fixtures/recording_runtime/core_calls.h"
#include "tests/fixtures/recording_runtime/recording_runtime.h"
#include "tests/fixtures/display_modes.h"
#include "tests/fixtures/service_members.h"
#include "tests/support/simulation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using vorlen::MonitorData;
using vorlen::VorlenCore;

HMODULE thisProgram() {
    return GetModuleHandleW(nullptr);
}

// The service's objects, linked into this program: for members that no export reaches.
class Service : public testing::Test {
protected:
    Service() {
        desktop.addMonitor(display1, L"Model A", wideMode);
        desktop.addMonitor(display2, L"Model B", smallMode);
    }

    // The core is the process's.
    ~Service() override {
        EXPECT_EQ(MonitorList::Get(), nullptr) << "a list was left behind";
        RecordingRuntime_Get()->resetCore();
    }

    SimulatedDesktop desktop{thisProgram()};
    CoreCalls core{thisProgram(), desktop.journal};
};

TEST_F(Service, makes_a_monitor_list_of_its_own_where_the_thread_has_none) {
    MonitorData service;
    EXPECT_EQ(MonitorList::Get(), monitorListOf(service).get());
    EXPECT_THAT(MonitorList::Get()->GetMonitors(), SizeIs(2)) << "without All Displays";
}

TEST_F(Service, takes_over_the_list_that_the_thread_has_and_destroys_it) {
    auto* const existing = new MonitorList(false);
    {
        MonitorData service;
        EXPECT_EQ(monitorListOf(service).get(), existing);
    }
    EXPECT_EQ(MonitorList::Get(), nullptr);
}

TEST_F(Service, treats_all_displays_of_a_list_that_it_took_over_like_a_monitor) {
    new MonitorList(true); // taken over by the service
    MonitorData service;
    ASSERT_THAT(service.GetMonitorList(), SizeIs(3));
    EXPECT_EQ(service.GetMonitorList()[2].handle, nullptr);
    EXPECT_EQ(service.GetMonitorList()[2].deviceName, L"All Displays");
    ASSERT_THAT(VorlenCore::Instance().GetMonitorItems(), SizeIs(3));
    EXPECT_EQ(VorlenCore::Instance().GetMonitorItems()[2].friendlyName, "All Displays");
}

TEST_F(Service, destroys_a_list_that_it_took_over_when_it_cannot_be_made) {
    new MonitorList(false); // taken over by the service
    desktop.journal.at("VorlenCore::ClearMonitorList", 1, [] { throw std::bad_alloc(); });
    EXPECT_THROW(MonitorData(), std::bad_alloc);
    EXPECT_EQ(MonitorList::Get(), nullptr);
}

TEST_F(Service, without_a_monitor_list_leaves_everything_as_it_is) {
    MonitorData service;
    const auto before = lastMonitorUpdate(service);
    std::unique_ptr<MonitorList> list = std::move(monitorListOf(service));
    desktop.clock.advance(std::chrono::seconds(1));
    desktop.journal.clear();

    service.UpdateMonitorList();
    EXPECT_THAT(desktop.journal.calls(), IsEmpty());
    EXPECT_EQ(lastMonitorUpdate(service), before);
    EXPECT_THAT(cachedMonitors(service), SizeIs(2));
    EXPECT_THAT(VorlenCore::Instance().GetMonitorItems(), SizeIs(2));
}

TEST_F(Service, without_a_monitor_list_can_be_destroyed) {
    MonitorData service;
    monitorListOf(service).reset();
}

TEST_F(Service, hands_names_to_the_core_as_they_are) {
    MonitorData service;
    service.SetCurrentMonitorName("name \xE9");
    service.SetVorlenModelName("model \xE9");
    service.SetMonitorModelName(std::string("a\0b", 3));
    EXPECT_THAT(core.texts, ElementsAre("name \xE9", "model \xE9", std::string("a\0b", 3)));
    EXPECT_EQ(VorlenCore::Instance().GetMonitorName(), "name \xE9");
    EXPECT_EQ(VorlenCore::Instance().GetMonitorModelName(), std::string("a\0b", 3));
}

TEST_F(Service, hands_the_low_byte_of_each_unit_of_a_wide_name_to_the_core) {
    MonitorData service;
    const wchar_t* const wide = L"AB\u00E9";
    service.SetCurrentMonitorName(wide);
    service.SetVorlenModelName(wide);
    service.GetVorlenModelName(wide);
    service.GetVorlenCameraNameByVorlenModelName(wide);
    const std::string narrow = "\x41\x42\xE9";
    EXPECT_THAT(core.texts, ElementsAre(narrow, narrow, narrow, narrow));
}

TEST_F(Service, hands_out_the_cores_own_answers) {
    MonitorData service;
    service.SetMonitorModelName("model");
    EXPECT_EQ(&service.GetMonitorModelName(), &VorlenCore::Instance().GetMonitorModelName());
    EXPECT_EQ(&service.GetVorlenModelName("device"),
              &VorlenCore::Instance().GetVorlenModelName("device"));
    core.cameraName = "camera";
    EXPECT_EQ(service.GetVorlenCameraNameByVorlenModelName("model"), core.cameraName.c_str());
    EXPECT_EQ(service.GetVorlenCameraNameByVorlenModelName(L"model"), core.cameraName.c_str());
}

// A member of the service that needs the core, and how often it asks for it in one call.
struct CoreUser {
    const char* name;
    void (*call)(MonitorData& service);
    std::ptrdiff_t questions = 1;
};

class ServiceMember : public Service, public testing::WithParamInterface<CoreUser> {
protected:
    std::ptrdiff_t questionsOfOneCall(MonitorData& service) {
        desktop.journal.clear();
        GetParam().call(service);
        const auto names = core.names();
        return std::count(names.begin(), names.end(), "Instance");
    }
};

TEST_P(ServiceMember, asks_for_the_core_in_each_call) {
    MonitorData service;
    EXPECT_EQ(questionsOfOneCall(service), GetParam().questions);
    EXPECT_EQ(questionsOfOneCall(service), GetParam().questions);
}

INSTANTIATE_TEST_SUITE_P(
    Members, ServiceMember,
    testing::Values(CoreUser{"UpdateMonitorList", [](auto& s) { s.UpdateMonitorList(); }, 3},
                    CoreUser{"GetCurrentMonitorName",
                             [](auto& s) {
                                 s.GetCurrentMonitorName();
                             }},
                    CoreUser{"SetCurrentMonitorName",
                             [](auto& s) {
                                 s.SetCurrentMonitorName("name");
                             }},
                    CoreUser{"SetCurrentMonitorNameWide",
                             [](auto& s) {
                                 s.SetCurrentMonitorName(L"name");
                             }},
                    CoreUser{"GetCurrentMonitorRect",
                             [](auto& s) {
                                 s.GetCurrentMonitorRect();
                             }},
                    CoreUser{"GetMonitorModelName",
                             [](auto& s) {
                                 s.GetMonitorModelName();
                             }},
                    CoreUser{"SetMonitorModelName",
                             [](auto& s) {
                                 s.SetMonitorModelName("model");
                             }},
                    CoreUser{"GetVorlenModelName",
                             [](auto& s) {
                                 s.GetVorlenModelName("device");
                             }},
                    CoreUser{"GetVorlenModelNameWide",
                             [](auto& s) {
                                 s.GetVorlenModelName(L"device");
                             }},
                    CoreUser{"SetVorlenModelName",
                             [](auto& s) {
                                 s.SetVorlenModelName("model");
                             }},
                    CoreUser{"SetVorlenModelNameWide",
                             [](auto& s) {
                                 s.SetVorlenModelName(L"model");
                             }},
                    CoreUser{"GetCameraName",
                             [](auto& s) {
                                 s.GetVorlenCameraNameByVorlenModelName("model");
                             }},
                    CoreUser{"GetCameraNameWide",
                             [](auto& s) {
                                 s.GetVorlenCameraNameByVorlenModelName(L"model");
                             }}),
    [](const auto& member) { return std::string(member.param.name); });

} // namespace
} // namespace tests
