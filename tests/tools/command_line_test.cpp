#include "tools/vorlen-monitor/command_line.h"
#include "tools/vorlen-monitor/failure.h"

#include <gmock/gmock.h>

namespace vorlen::tool {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

#define COMMANDS "monitors, windows, status, watch, overview, doctor, record"

std::string information(const std::vector<std::string>& arguments) {
    return std::get<Information>(parseCommandLine(arguments).request).text;
}

bool monitorsAsJson(const std::vector<std::string>& arguments) {
    return std::get<MonitorsOptions>(parseCommandLine(arguments).request).json;
}

// The message with which the arguments are refused; empty when they are not.
std::string refusal(const std::vector<std::string>& arguments) {
    try {
        parseCommandLine(arguments);
        return {};
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.exitCode(), ExitCode::usage);
        return failure.what();
    }
}

TEST(CommandLine, selects_a_table_or_json) {
    EXPECT_FALSE(monitorsAsJson({"monitors"}));
    EXPECT_TRUE(monitorsAsJson({"monitors", "--json"}));
    EXPECT_TRUE(monitorsAsJson({"monitors", "--json", "--json"}));
}

TEST(CommandLine, selects_events_only_for_a_watch) {
    const auto eventsOnly = [](const std::vector<std::string>& arguments) {
        return std::get<WatchOptions>(parseCommandLine(arguments).request).eventsOnly;
    };
    EXPECT_FALSE(eventsOnly({"watch"}));
    EXPECT_TRUE(eventsOnly({"watch", "--events-only"}));
    EXPECT_THAT(information({"watch", "--help"}),
                AllOf(HasSubstr("--events-only"), HasSubstr("(unreported)")));
}

TEST(CommandLine, shows_the_help_of_the_program_or_a_command) {
    for (const char* const option : {"--help", "-h"}) {
        EXPECT_THAT(information({option}), AllOf(HasSubstr("Usage: vorlen-monitor [OPTIONS]"),
                                                 HasSubstr("monitors"), Not(HasSubstr("--json"))));
        EXPECT_THAT(information({"monitors", option}),
                    AllOf(HasSubstr("Usage: vorlen-monitor monitors"), HasSubstr("--json")));
    }
}

TEST(CommandLine, offers_kit_models_where_they_are_used) {
    for (const char* const command : {"status", "overview", "doctor", "record"}) {
        EXPECT_THAT(information({command, "--help"}),
                    ContainsRegex("\n  --kit-model NAME +The name of another kit model "
                                  "\\(repeatable\\)\n"));
    }
    for (const char* const command : {"monitors", "windows", "watch"}) {
        EXPECT_THAT(information({command, "--help"}), Not(HasSubstr("--kit-model")));
    }
}

TEST(CommandLine, selects_text_or_json_and_redaction_for_the_doctor) {
    const auto doctor = [](const std::vector<std::string>& arguments) {
        return std::get<DoctorOptions>(parseCommandLine(arguments).request);
    };
    EXPECT_FALSE(doctor({"doctor"}).json || doctor({"doctor"}).redact);
    EXPECT_TRUE(doctor({"doctor", "--json"}).json);
    EXPECT_TRUE(doctor({"doctor", "--redact"}).redact);
    EXPECT_EQ(doctor({"doctor", "--kit-model", "ONE"}).kitModels, std::vector<std::string>{"ONE"});
}

TEST(CommandLine, takes_the_file_of_a_recording) {
    const auto record = [](const std::vector<std::string>& arguments) {
        return std::get<RecordOptions>(parseCommandLine(arguments).request);
    };
    EXPECT_EQ(record({"record", "é.json"}).file, "é.json");
    EXPECT_FALSE(record({"record", "a.json"}).redact);
    EXPECT_TRUE(record({"record", "--redact", "a.json"}).redact);
    EXPECT_EQ(record({"record", "--kit-model", "A", "a.json", "--kit-model", "B"}).kitModels,
              (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(refusal({"record"}), "FILE is required; see vorlen-monitor record --help");
    EXPECT_EQ(refusal({"record", "a.json", "b.json"}),
              "unexpected argument \"b.json\" for vorlen-monitor record; "
              "see vorlen-monitor record --help");
}

TEST(CommandLine, takes_one_argument_for_each_kit_model) {
    EXPECT_EQ(refusal({"status", "--kit-model", "A", "B"}),
              "unexpected argument \"B\" for vorlen-monitor status; see vorlen-monitor status "
              "--help");
}

TEST(CommandLine, asks_for_the_versions) {
    EXPECT_TRUE(std::holds_alternative<VersionOptions>(parseCommandLine({"--version"}).request));
}

TEST(CommandLine, replays_a_recording_when_it_is_in_front_of_the_request) {
    const auto replay = [](const std::vector<std::string>& arguments) {
        return parseCommandLine(arguments).replay;
    };
    EXPECT_EQ(replay({"monitors"}), std::nullopt);
    EXPECT_EQ(replay({"--version"}), std::nullopt);
    EXPECT_EQ(replay({"--replay", "a b.json", "monitors"}), "a b.json");
    EXPECT_EQ(replay({"--replay=a.json", "monitors"}), "a.json");
    EXPECT_EQ(replay({"--replay", "a.json", "--version"}), "a.json");
    EXPECT_EQ(replay({"--version", "--replay", "a.json"}), "a.json");
    EXPECT_EQ(replay({"--replay", "", "monitors"}), "");
    EXPECT_THAT(information({"--help"}), ContainsRegex("\n  --replay FILE +Run the command on"));
}

TEST(CommandLine, refuses_a_replay_that_is_misplaced_or_names_no_file) {
    EXPECT_EQ(refusal({"monitors", "--replay", "a.json"}),
              "unknown option \"--replay\"; see vorlen-monitor monitors --help");
    EXPECT_THAT(refusal({"--replay"}), HasSubstr("--replay"));
    EXPECT_THAT(refusal({"--replay", "a.json", "--replay", "b.json", "monitors"}),
                HasSubstr("--replay"));
}

TEST(CommandLine, refuses_a_missing_command) {
    EXPECT_EQ(refusal({}),
              "no command given; the commands are: " COMMANDS "; see vorlen-monitor --help");
}

TEST(CommandLine, refuses_an_unknown_command) {
    const std::string expected =
        "unknown command \"screens\"; the commands are: " COMMANDS "; see vorlen-monitor --help";
    EXPECT_EQ(refusal({"screens"}), expected);
    EXPECT_EQ(refusal({"screens", "monitors"}), expected);
}

TEST(CommandLine, refuses_an_unknown_option) {
    EXPECT_EQ(refusal({"--jsno"}), "unknown option \"--jsno\"; see vorlen-monitor --help");
    EXPECT_EQ(refusal({"--jsno", "monitors"}),
              "unknown option \"--jsno\"; see vorlen-monitor --help");
    EXPECT_EQ(refusal({"monitors", "--jsno=3"}),
              "unknown option \"--jsno=3\"; see vorlen-monitor monitors --help");
}

TEST(CommandLine, refuses_an_argument_too_many) {
    EXPECT_EQ(refusal({"monitors", "DISPLAY1"}),
              "unexpected argument \"DISPLAY1\" for vorlen-monitor monitors; "
              "see vorlen-monitor monitors --help");
}

TEST(CommandLine, refuses_a_value_for_a_flag) {
    EXPECT_EQ(refusal({"monitors", "--json=yes"}),
              "option json takes no value; see vorlen-monitor monitors --help");
}

} // namespace
} // namespace vorlen::tool
