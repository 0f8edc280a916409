#include "snapshot/recording.h"
#include "tests/snapshot/every_field.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace tests {
namespace {

using namespace snapshot;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

// The shortest recording, with more fields of the reading.
std::string recordingWith(const std::string& moreFields) {
    return R"({"format": "vorlen-monitor recording", "version": 1, "origin": "by hand")" +
           (moreFields.empty() ? "" : ", " + moreFields) + "}";
}

// The message with which a text is refused; empty when it is not.
std::string refusal(const std::string& text) {
    try {
        fromRecording(text);
        return {};
    } catch (const RecordingError& error) {
        return error.what();
    }
}

Reading withTitle(const std::wstring& title) {
    Reading reading;
    reading.origin = "test";
    reading.windows.emplace_back().handle = 1;
    reading.windows.front().title = title;
    return reading;
}

TEST(Recording, has_every_field_of_a_reading) {
    EXPECT_EQ(toRecording(everyField()), everyFieldRecording());
}

TEST(Recording, gives_back_every_field) {
    EXPECT_EQ(toRecording(fromRecording(everyFieldRecording())), everyFieldRecording());
}

TEST(Recording, gives_back_an_empty_reading) {
    const Reading reading;
    EXPECT_EQ(toRecording(fromRecording(toRecording(reading))), toRecording(reading));
}

TEST(Recording, gives_back_the_limits_of_numbers) {
    Reading reading;
    DisplayPath& path = reading.displayConfiguration.paths.emplace_back();
    reading.displayConfiguration.announcedPaths = 1;
    path.sourceName.status = std::numeric_limits<std::int32_t>::min();
    path.targetName.status = std::numeric_limits<std::int32_t>::max();
    path.sourceId = std::numeric_limits<std::uint32_t>::max();
    reading.shellWindow = std::numeric_limits<std::uint64_t>::max();
    const Reading read = fromRecording(toRecording(reading));
    const DisplayPath& pathRead = read.displayConfiguration.paths.at(0);
    EXPECT_EQ(pathRead.sourceName.status, path.sourceName.status);
    EXPECT_EQ(pathRead.targetName.status, path.targetName.status);
    EXPECT_EQ(pathRead.sourceId, path.sourceId);
    EXPECT_EQ(read.shellWindow, reading.shellWindow);
}

TEST(Recording, gives_back_texts_unchanged) {
    for (const auto& title :
         {std::wstring(L"é あ \xD83D\xDE00"), std::wstring(L"\"\\/\b\t\r\n\x1B[31m\x9B\x7F\x202E"),
          std::wstring(L"a\0b", 3), std::wstring(L"\xFFFD\xFEFF")}) {
        const std::string recording = toRecording(withTitle(title));
        EXPECT_EQ(fromRecording(recording).windows.at(0).title, title) << recording;
    }
}

TEST(Recording, gives_back_texts_that_are_not_valid_utf_16) {
    for (const std::wstring title : {L"\xD83D", L"a\xDE00z", L"\xDE00\xD83D"}) {
        EXPECT_EQ(fromRecording(toRecording(withTitle(title))).windows.at(0).title, title);
    }
    EXPECT_THAT(toRecording(withTitle(L"a\xD83D")), HasSubstr(R"("title": [97, 55357],)"));
}

TEST(Recording, cannot_control_a_terminal) {
    const std::string recording = toRecording(withTitle(L"\x1B[31m \x7F \x9B \x202E"));
    EXPECT_THAT(recording, HasSubstr(R"(\u001b[31m \u007f \u009b \u202e)"));
}

TEST(Recording, has_one_line_for_each_window_and_mode) {
    Reading reading;
    reading.windows.resize(3);
    reading.monitors.resize(1);
    reading.monitors.front().offeredModes.resize(4);
    const std::string recording = toRecording(reading);
    const auto linesWith = [&](std::string_view start, std::string_view end) {
        std::size_t count = 0;
        for (std::size_t at = recording.find(start); at != std::string::npos;
             at = recording.find(start, at + 1)) {
            const std::string line = recording.substr(at, recording.find('\n', at + 1) - at);
            count += line.find(end) != std::string::npos ? 1u : 0u;
        }
        return count;
    };
    EXPECT_EQ(linesWith("\n    {\"handle\"", "\"reason\": null}"), 3u);
    EXPECT_EQ(linesWith("\n        {\"width\"", "\"interlaced\": false}"), 4u);
    EXPECT_TRUE(recording.ends_with("\n}\n"));
}

TEST(Recording, may_leave_out_fields_with_their_default_value) {
    Reading expected;
    expected.origin = "by hand";
    expected.monitors.emplace_back().handle = 0x11;
    expected.monitors.front().currentMode.emplace();
    EXPECT_EQ(toRecording(fromRecording(recordingWith(
                  R"("monitors": [{"handle": "0x11", "currentMode": {"mode": {}}}])"))),
              toRecording(expected));
    EXPECT_EQ(fromRecording(recordingWith("")).process.dpiAwareness, -1);
}

TEST(Recording, may_have_digits_of_either_case) {
    EXPECT_EQ(fromRecording(recordingWith(R"("shellWindow": "0xAbC")")).shellWindow, 0xABCu);
}

struct Refused {
    std::string text;
    std::string message;
};

TEST(Recording, is_refused_when_it_is_not_json) {
    for (const auto& [text, message] : std::vector<Refused>{
             {"HANDLE  DEVICE NAME\n", "the text is not JSON: line 1 has an error"},
             {"{\n  \"format\": 1,\n  version\n}", "the text is not JSON: line 3 has an error"},
             {"{} {}", "the text is not JSON: line 1 has an error"},
             {"\xFF\xFE{\0}\0", "the text is not JSON: line 1 has an error"},
             {"[1e999]", "the text is not JSON: it has a number that is too large"}}) {
        EXPECT_EQ(refusal(text), message) << text;
    }
}

TEST(Recording, is_refused_when_it_was_cut_off_anywhere) {
    const std::string whole = everyFieldRecording();
    ASSERT_EQ(refusal(whole), "");
    std::vector<std::string> refusals;
    for (std::size_t length = 0; length < whole.size() - 1; ++length) {
        refusals.push_back(refusal(whole.substr(0, length)));
    }
    EXPECT_THAT(refusals, Each("the text ends in the middle of a recording: the file was cut off"));
}

TEST(Recording, is_refused_when_it_is_something_else) {
    const std::string message = "the text is not a recording: it has no field \"format\" that says "
                                "\"vorlen-monitor recording\"";
    for (const std::string text : {"[]", "null", "7", "{}", R"({"version": 1, "origin": "x"})",
                                   R"({"format": "other", "version": 1})", R"({"format": 1})"}) {
        EXPECT_EQ(refusal(text), message) << text;
    }
}

TEST(Recording, is_refused_when_it_is_of_another_version) {
    const auto withVersion = [](const std::string& version) {
        return R"({"format": "vorlen-monitor recording", )" + version + R"("futureField": 1})";
    };
    EXPECT_EQ(refusal(withVersion(R"("version": 2, )")),
              "made by a newer vorlen-monitor (recording version 2); this one reads version 1");
    EXPECT_EQ(refusal(withVersion(R"("version": 18446744073709551615, )")),
              "made by a newer vorlen-monitor (recording version 18446744073709551615); this one "
              "reads version 1");
    for (const std::string version : {"", R"("version": 0, )", R"("version": -1, )",
                                      R"("version": "1", )", R"("version": 1.5, )"}) {
        EXPECT_EQ(refusal(withVersion(version)), "version is not 1") << version;
    }
}

TEST(Recording, is_refused_without_its_origin) {
    EXPECT_EQ(refusal(R"({"format": "vorlen-monitor recording", "version": 1})"),
              "origin is missing: say how the recording was made");
}

TEST(Recording, is_refused_for_an_unknown_field) {
    for (const auto& [fields, message] : std::vector<Refused>{
             {R"("monitor": [])", "monitor is not a field of a recording"},
             {R"("monitors": [{"handle": "0x1"}, {"deviceNmae": ""}])",
              "monitors[1].deviceNmae is not a field of a recording"},
             {R"("process": {"left": 1})", "process.left is not a field of a recording"}}) {
        EXPECT_EQ(refusal(recordingWith(fields)), message);
    }
}

TEST(Recording, is_refused_in_a_short_sentence_for_a_long_name) {
    const std::string name(1000, 'x');
    const std::string shown = name.substr(0, 80) + "...";
    EXPECT_EQ(refusal(recordingWith("\"" + name + "\": 1")),
              shown + " is not a field of a recording");
    EXPECT_EQ(refusal("{\"" + name + "\": 1, \"" + name + "\": 1}"),
              "the field \"" + shown + "\" occurs twice");
}

TEST(Recording, is_refused_for_a_value_of_another_type) {
    const std::string any32 = " is not a whole number from -2147483648 to 2147483647";
    for (const auto& [fields, message] : std::vector<Refused>{
             {R"("process": [])", "process is not an object"},
             {R"("process": null)", "process is not an object"},
             {R"("monitors": {})", "monitors is not a list"},
             {R"("monitors": [1])", "monitors[0] is not an object"},
             {R"("redacted": "yes")", "redacted is not true or false"},
             {R"("redacted": 1)", "redacted is not true or false"},
             {R"("process": {"windowsVersion": 10})", "process.windowsVersion is not a text"},
             {R"("process": {"windowsVersion": [49]})", "process.windowsVersion is not a text"},
             {R"("monitors": [{"deviceName": 1}])",
              "monitors[0].deviceName is not a text or a list of UTF-16 units"},
             {R"("monitors": [{"deviceName": [65, 65536]}])",
              "monitors[0].deviceName[1] is not a whole number from 0 to 65535"},
             {R"("monitors": [{"currentMode": 5}])", "monitors[0].currentMode is not an object"},
             {R"("monitors": [{"rectangle": {"left": "1"}}])",
              "monitors[0].rectangle.left" + any32},
             {R"("monitors": [{"rectangle": {"left": 1.5}}])",
              "monitors[0].rectangle.left" + any32},
             {R"("windows": [{"reason": 5}])", "windows[0].reason is not a text"},
         }) {
        EXPECT_EQ(refusal(recordingWith(fields)), message);
    }
}

TEST(Recording, is_refused_for_a_number_without_sense) {
    const std::string unsigned32 = " is not a whole number from 0 to 4294967295";
    const std::string any32 = " is not a whole number from -2147483648 to 2147483647";
    const std::string hex64 = " is not a text with 1 to 16 digits such as \"0x10001\"";
    const std::string hex32 = " is not a text with 1 to 8 digits such as \"0x10001\"";
    for (const auto& [fields, message] : std::vector<Refused>{
             {R"("displayConfiguration": {"announcedPaths": -1})",
              "displayConfiguration.announcedPaths" + unsigned32},
             {R"("displayConfiguration": {"announcedModes": 4294967296})",
              "displayConfiguration.announcedModes" + unsigned32},
             {R"("monitors": [{"offeredModes": [{"width": 1000000000000}]}])",
              "monitors[0].offeredModes[0].width" + any32},
             {R"("monitors": [{"offeredModes": [{"width": 18446744073709551615}]}])",
              "monitors[0].offeredModes[0].width" + any32},
             {R"("shellWindow": 5)", "shellWindow" + hex64},
             {R"("shellWindow": "5")", "shellWindow" + hex64},
             {R"("shellWindow": "0x")", "shellWindow" + hex64},
             {R"("shellWindow": "0x-1")", "shellWindow" + hex64},
             {R"("shellWindow": "0x1 ")", "shellWindow" + hex64},
             {R"("shellWindow": "0x12345678123456781")", "shellWindow" + hex64},
             {R"("windows": [{"style": "0x123456781"}])", "windows[0].style" + hex32},
         }) {
        EXPECT_EQ(refusal(recordingWith(fields)), message);
    }
}

TEST(Recording, is_refused_when_a_field_occurs_twice) {
    for (const auto& [fields, name] :
         std::vector<Refused>{{R"("windows": [], "windows": [])", "windows"},
                              {R"("version": 1)", "version"},
                              {R"("process": {"userName": "a", "userName": "a"})", "userName"}}) {
        EXPECT_EQ(refusal(recordingWith(fields)), "the field \"" + name + "\" occurs twice");
    }
    EXPECT_EQ(refusal(recordingWith(R"("windows": [{"handle": "0x1"}, {"handle": "0x2"}])")), "");
}

// In a time that grows with the size of the text, not with its square.
TEST(Recording, is_refused_when_it_has_very_many_fields) {
    std::string fields;
    for (int i = 0; i < 300'000; ++i) {
        fields += (i == 0 ? "\"f" : ", \"f") + std::to_string(i) + "\": 0";
    }
    EXPECT_EQ(refusal(recordingWith(fields)), "f0 is not a field of a recording");
}

TEST(Recording, is_refused_when_two_windows_have_one_handle) {
    for (const std::string list : {"windows", "monitors"}) {
        const auto with = [&](const std::string& entries) {
            return refusal(recordingWith("\"" + list + "\": [" + entries + "]"));
        };
        EXPECT_EQ(with(R"({"handle": "0x1"}, {"handle": "0x2"})"), "");
        EXPECT_EQ(with(R"({"handle": "0x1"}, {"handle": "0x2"}, {"handle": "0x1"})"),
                  list + "[2].handle is that of an earlier entry");
        EXPECT_EQ(with("{}"), list + "[0].handle is missing or zero");
    }
}

TEST(Recording, is_refused_when_it_has_too_many_windows) {
    const auto entries = [](std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += i == 0 ? "{}" : ",{}";
        }
        return "[" + text + "]";
    };
    EXPECT_EQ(refusal(recordingWith(R"("windows": )" + entries(100'001))),
              "windows has 100001 entries, more than 100000");
    EXPECT_EQ(refusal(recordingWith(R"("monitors": [{"handle": "0x1", "offeredModes": )" +
                                    entries(100'000) + "}]")),
              "");
}

// As many as 100,000 windows could be replayed in seconds, and as many monitors or paths in hours.
TEST(Recording, is_refused_when_it_has_too_many_monitors_or_paths) {
    const auto withMonitors = [](int count) {
        std::string monitors;
        for (int i = 1; i <= count; ++i) {
            monitors += (i == 1 ? "" : ", ") + (R"({"handle": "0x)" + std::to_string(i) + "\"}");
        }
        return refusal(recordingWith("\"monitors\": [" + monitors + "]"));
    };
    EXPECT_EQ(withMonitors(1000), "");
    EXPECT_EQ(withMonitors(1001), "monitors has 1001 entries, more than 1000");
    const auto withPaths = [](const std::string& count) {
        return refusal(
            recordingWith(R"("displayConfiguration": {"announcedPaths": )" + count + "}"));
    };
    EXPECT_EQ(withPaths("1000"), "");
    EXPECT_EQ(withPaths("1001"), "displayConfiguration.announcedPaths is more than 1000");
}

TEST(Recording, is_refused_when_it_has_more_paths_than_announced) {
    const auto with = [](const std::string& fields) {
        return refusal(recordingWith(R"("displayConfiguration": {)" + fields + "}"));
    };
    EXPECT_EQ(with(R"("announcedPaths": 1, "paths": [{}], "announcedModes": 2, "modes": [{}])"),
              "");
    EXPECT_EQ(with(R"("announcedPaths": 1, "paths": [{}, {}])"),
              "displayConfiguration.paths has more entries than "
              "displayConfiguration.announcedPaths says");
    EXPECT_EQ(with(R"("modes": [{}])"), "displayConfiguration.modes has more entries than "
                                        "displayConfiguration.announcedModes says");
    EXPECT_EQ(with(R"("announcedModes": 100001)"),
              "displayConfiguration.announcedModes is more than 100000");
}

TEST(Recording, is_refused_for_an_unknown_step_of_the_query) {
    EXPECT_EQ(refusal(recordingWith(R"("wmi": {"steps": [{"name": "CoInitializeEx"}, {}]})")),
              "wmi.steps[1].name is not a step of the query");
}

TEST(Recording, is_refused_when_a_step_of_the_query_occurs_twice) {
    const std::string step = R"({"name": "CoInitializeEx"})";
    const std::string other = R"({"name": "CoInitializeSecurity"})";
    const auto with = [](const std::string& steps) {
        return refusal(recordingWith(R"("wmi": {"steps": [)" + steps + "]}"));
    };
    EXPECT_EQ(with(step + ", " + other), "");
    EXPECT_EQ(with(step + ", " + other + ", " + step),
              "wmi.steps[2].name is that of an earlier step");
}

TEST(Recording, is_refused_when_it_is_nested_without_end) {
    const std::string opened(100'000, '[');
    const std::string closed(100'000, ']');
    EXPECT_THAT(refusal(opened), HasSubstr("was cut off"));
    EXPECT_EQ(refusal(recordingWith("\"windows\": " + opened + closed)),
              "windows[0] is not an object");
    EXPECT_THAT(refusal(R"({"format": )" + opened + closed + "}"), HasSubstr("is not a recording"));
    EXPECT_EQ(
        refusal(R"({"format": "vorlen-monitor recording", "version": )" + opened + closed + "}"),
        "version is not 1");
}

} // namespace
} // namespace tests
