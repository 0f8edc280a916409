#include "snapshot/recording.h"
#include "snapshot/redaction.h"
#include "tests/snapshot/every_field.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace tests {
namespace {

using snapshot::Reading;
using snapshot::Redaction;
using snapshot::toRecording;
using snapshot::Window;
using testing::HasSubstr;
using testing::Not;

class RedactionTest : public testing::Test {
protected:
    void addWindow(const std::wstring& title, const std::optional<std::string>& reason = {}) {
        Window& window = reading.windows.emplace_back();
        window.title = title;
        window.titleLength = static_cast<std::int32_t>(title.size());
        window.reason = reason;
    }

    void addPath(const std::wstring& devicePath) {
        reading.displayConfiguration.paths.emplace_back().targetName.devicePath = devicePath;
    }

    void addWmiObject(const std::wstring& instanceName, const std::wstring& serialNumber) {
        reading.wmi.objects.push_back({{{L"InstanceName", 0, 8, instanceName},
                                        {L"SerialNumberID", 0, 0x2003, serialNumber}}});
    }

    const std::wstring& title(std::size_t i) const { return reading.windows.at(i).title; }
    const std::wstring& devicePath(std::size_t i) const {
        return reading.displayConfiguration.paths.at(i).targetName.devicePath;
    }
    const std::wstring& property(std::size_t object, std::size_t i) const {
        return reading.wmi.objects.at(object).properties.at(i).text;
    }

    Reading reading;
    Redaction redaction;
};

using RedactionOfTitles = RedactionTest;

TEST_F(RedactionOfTitles, replaces_the_same_title_by_the_same_placeholder) {
    for (const wchar_t* const each :
         {L"Letter to Bob", L"Accounts", L"Letter to Bob", L"accounts"}) {
        addWindow(each);
    }
    redaction.redact(reading);
    EXPECT_TRUE(reading.redacted);
    EXPECT_EQ(title(0), L"title 1");
    EXPECT_EQ(title(1), L"title 2");
    EXPECT_EQ(title(2), L"title 1");
    EXPECT_EQ(title(3), L"title 3");
    EXPECT_EQ(redaction.title(L"Accounts"), L"title 2");
    EXPECT_EQ(redaction.title(L"read later"), L"title 4");
    EXPECT_EQ(redaction.title(L""), L"");
}

// Otherwise a program that reads the title with this length would cut it.
TEST_F(RedactionOfTitles, gives_the_length_of_the_placeholder) {
    addWindow(L"a");
    addWindow(L"");
    redaction.redact(reading);
    EXPECT_EQ(reading.windows[0].titleLength, 7);
    EXPECT_EQ(title(1), L"");
    EXPECT_EQ(reading.windows[1].titleLength, 0);
}

TEST_F(RedactionOfTitles, keeps_the_titles_of_blocked_windows) {
    addWindow(L"Task View", "blocked");
    addWindow(L"Task View", "not visible");
    redaction.redact(reading);
    EXPECT_EQ(title(0), L"Task View");
    EXPECT_EQ(title(1), L"title 1");
}

using RedactionOfDevices = RedactionTest;

TEST_F(RedactionOfDevices, replaces_serial_numbers) {
    addWmiObject(L"", L"SN-1");
    addWmiObject(L"", L"");
    addWmiObject(L"", L"SN-2");
    addWmiObject(L"", L"SN-1");
    redaction.redact(reading);
    EXPECT_EQ(property(0, 1), L"serial number 1");
    EXPECT_EQ(property(1, 1), L"");
    EXPECT_EQ(property(2, 1), L"serial number 2");
    EXPECT_EQ(property(3, 1), L"serial number 1");
    EXPECT_EQ(redaction.serialNumber(L"SN-2"), L"serial number 2");
}

// The library finds the serial number by comparing both.
TEST_F(RedactionOfDevices, replaces_the_same_instance_in_paths_and_names) {
    addPath(LR"(\\?\DISPLAY#VLN0001#4&2d1b9f&0&UID1#{e6f07b5f-97ee})");
    addPath(LR"(\\?\DISPLAY#VLN0001#4&2d1b9f&0&UID2#{e6f07b5f-97ee})");
    addPath(L"");
    addWmiObject(LR"(DISPLAY\VLN0001\4&2d1b9f&0&UID2_0)", L"");
    addWmiObject(LR"(DISPLAY\VLN0002\4&2d1b9f&0&UID3_12)", L"");
    redaction.redact(reading);
    EXPECT_EQ(devicePath(0), LR"(\\?\DISPLAY#VLN0001#(instance 1)#{e6f07b5f-97ee})");
    EXPECT_EQ(devicePath(1), LR"(\\?\DISPLAY#VLN0001#(instance 2)#{e6f07b5f-97ee})");
    EXPECT_EQ(devicePath(2), L"");
    EXPECT_EQ(property(0, 0), LR"(DISPLAY\VLN0001\(instance 2)_0)");
    EXPECT_EQ(property(1, 0), LR"(DISPLAY\VLN0002\(instance 3)_12)");
}

TEST_F(RedactionOfDevices, replaces_all_of_an_instance_with_underscores) {
    addPath(LR"(\\?\DISPLAY#VLN0001#SN_1_2#{e6f07b5f-97ee})");
    addWmiObject(LR"(DISPLAY\VLN0001\SN_1_2_0)", L"");
    redaction.redact(reading);
    EXPECT_EQ(devicePath(0), LR"(\\?\DISPLAY#VLN0001#(instance 1)#{e6f07b5f-97ee})");
    EXPECT_EQ(property(0, 0), LR"(DISPLAY\VLN0001\(instance 1)_0)");
}

TEST_F(RedactionOfDevices, makes_no_instance_the_start_of_another) {
    for (int i = 1; i <= 10; ++i) {
        addPath(LR"(\\?\DISPLAY#M#)" + std::to_wstring(100 + i) + L"#{}");
    }
    redaction.redact(reading);
    const std::wstring first = devicePath(0).substr(0, devicePath(0).rfind(L'#'));
    for (std::size_t i = 1; i < 10; ++i) {
        EXPECT_FALSE(devicePath(i).starts_with(first)) << i;
    }
}

TEST_F(RedactionOfDevices, replaces_all_of_a_text_without_parts) {
    addPath(L"a secret");
    addPath(L"#a#secret");
    addWmiObject(L"a_secret", L"");
    redaction.redact(reading);
    EXPECT_EQ(devicePath(0), L"(instance 1)");
    EXPECT_EQ(devicePath(1), L"(instance 2)");
    EXPECT_EQ(property(0, 0), L"(instance 3)");
}

using RedactionOfTheUser = RedactionTest;

TEST_F(RedactionOfTheUser, replaces_the_name_wherever_it_occurs) {
    reading = everyField();
    reading.process.userName = L"alice";
    reading.origin = "by Alice";
    reading.process.kitModels = L"alice;B";
    reading.monitors[0].deviceName = LR"(\\.\ALICE)";
    reading.displayConfiguration.paths[0].sourceName.gdiDeviceName = LR"(\\.\ALICE)";
    reading.displayConfiguration.paths[0].targetName.friendlyName = L"Alice's alice-TV";
    reading.displayConfiguration.paths[0].targetName.devicePath = L"#alice#instance#class";
    reading.wmi.objects[0].properties.push_back({L"UserFriendlyName", 0, 8, L"aliceTV"});
    reading.windows[0].className = L"Window[alice;;1]";
    reading.windows[0].title = L"Alice";
    redaction.redact(reading);
    EXPECT_EQ(reading.process.userName, L"user 1");
    EXPECT_EQ(reading.origin, "by user 1");
    EXPECT_EQ(reading.process.kitModels, L"user 1;B");
    EXPECT_EQ(reading.monitors[0].deviceName, LR"(\\.\user 1)");
    EXPECT_EQ(reading.displayConfiguration.paths[0].sourceName.gdiDeviceName, LR"(\\.\user 1)");
    EXPECT_EQ(reading.displayConfiguration.paths[0].targetName.friendlyName, L"user 1's user 1-TV");
    EXPECT_EQ(devicePath(0), L"#user 1#(instance 1)#class");
    EXPECT_EQ(property(0, 1), L"user 1TV");
    EXPECT_EQ(reading.windows[0].className, L"Window[user 1;;1]");
    EXPECT_EQ(title(0), L"title 1");
    EXPECT_EQ(redaction.title(L"alice"), L"title 1");
}

TEST_F(RedactionOfTheUser, keeps_texts_equal_that_have_the_name) {
    reading.process.userName = L"alice";
    addWmiObject(L"", L"alice-1");
    redaction.redact(reading);
    EXPECT_EQ(property(0, 1), L"serial number 1");
    EXPECT_EQ(redaction.serialNumber(L"alice-1"), L"serial number 1");
}

TEST_F(RedactionOfTheUser, does_not_change_the_names_of_wmi) {
    reading.process.userName = L"user";
    reading.wmi.objects = {{{{L"UserFriendlyName", 0, 8, L"TV of user"}}}};
    redaction.redact(reading);
    EXPECT_EQ(reading.wmi.objects[0].properties[0].name, L"UserFriendlyName");
    EXPECT_EQ(property(0, 0), L"TV of user 1");
}

TEST_F(RedactionOfTheUser, changes_nothing_without_a_name) {
    reading.windows.emplace_back().className = L"a class";
    redaction.redact(reading);
    EXPECT_EQ(reading.process.userName, L"");
    EXPECT_EQ(reading.windows[0].className, L"a class");
}

TEST_F(RedactionTest, leaves_no_original_in_the_recording) {

    reading = everyField();
    reading.redacted = false;
    reading.windows[0].title = L"Letter to Bob - alice - SN-1";
    addPath(LR"(\\?\DISPLAY#VLN0001#4&2d1b9f&0&UID1#{e6f07b5f-97ee})");
    addWmiObject(LR"(DISPLAY\VLN0001\4&2d1b9f&0&UID1_0)", L"SN-1");
    const std::string before = toRecording(reading);
    redaction.redact(reading);
    const std::string after = toRecording(reading);
    for (const std::string original : {"alice", "Letter to Bob", "SN-1", "4&2d1b9f"}) {
        EXPECT_THAT(before, HasSubstr(original));
        EXPECT_THAT(after, Not(HasSubstr(original)));
    }
}

TEST_F(RedactionTest, changes_nothing_the_second_time) {
    reading = everyField();
    for (const wchar_t* const each : {L"b", L"a", L"alice", L"Task View", L"b"}) {
        addWindow(each, each == std::wstring(L"Task View") ? "blocked" : "no title");
    }
    addPath(LR"(\\?\DISPLAY#VLN0001#4&2d1b9f&0&UID1#{e6f07b5f-97ee})");
    addWmiObject(LR"(DISPLAY\VLN0001\4&2d1b9f&0&UID1_0)", L"SN-1");
    redaction.redact(reading);
    const std::string once = toRecording(reading);
    Redaction().redact(reading);
    EXPECT_EQ(toRecording(reading), once);
}

} // namespace
} // namespace tests
