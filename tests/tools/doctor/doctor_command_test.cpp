#include "platform/text.h"
#include "tests/tools/doctor/doctor_test.h"
#include "tools/vorlen-monitor/doctor/doctor_command.h"
#include "tools/vorlen-monitor/doctor/findings.h"
#include "tools/vorlen-monitor/doctor/report.h"

#include <nlohmann/json.hpp>

namespace vorlen::tool {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class DoctorRedaction : public DoctorTest {
protected:
    DoctorRedaction() { examination.reading.process.userName = L"Miller"; }

    std::string redactedOutput() {
        redact(examination);
        const std::vector<Finding> found = examine(examination);
        return doctorText(examination.status, found) + doctorJson(examination.status, found).dump();
    }
};

TEST_F(DoctorRedaction, replaces_titles) {
    addWindow(L"Letter to the bank", "disabled");
    EXPECT_THAT(redactedOutput(), AllOf(HasSubstr("title 1"), Not(HasSubstr("Letter"))));
}

TEST_F(DoctorRedaction, replaces_serial_numbers_in_reading_and_answers_alike) {
    setText(examination.monitors[1].monitorId, L"SN-1");
    examination.reading.wmi.objects[0].properties = {{L"SerialNumberID", 0, 0, L"SN-1"}};
    EXPECT_THAT(redactedOutput(), AllOf(HasSubstr("serial number 1"), Not(HasSubstr("SN-1"))));
    EXPECT_EQ(examination.reading.wmi.objects[0].properties[0].text, L"serial number 1");
    EXPECT_EQ(textOf(examination.monitors[0].monitorId), L"serial number 1");
}

TEST_F(DoctorRedaction, replaces_the_user_in_names_and_kit_models) {
    rename(0, L"KIT of miller");
    examination.kitModels = {L"kit of Miller"};
    recogniseNone();
    const std::string output = redactedOutput();
    EXPECT_THAT(output, AllOf(HasSubstr("KIT of user 1"), HasSubstr("kit of user 1")));
    EXPECT_THAT(output, AllOf(Not(HasSubstr("miller")), Not(HasSubstr("Miller"))));
}

TEST_F(DoctorRedaction, does_not_change_the_findings) {
    examination.reading.process.userName = L"display1"; // a part of the device name
    EXPECT_THAT(findings(), IsEmpty());
    redact(examination);
    EXPECT_THAT(findings(), IsEmpty());
    EXPECT_EQ(textOf(examination.monitors[0].deviceName), L"\\\\.\\user 1");
}

} // namespace
} // namespace vorlen::tool
