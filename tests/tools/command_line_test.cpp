#include "tools/vorlen-monitor/command_line.h"
#include "tools/vorlen-monitor/failure.h"

#include <gmock/gmock.h>

namespace vorlen::tool {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

#define COMMANDS "monitors, windows, status, watch, overview"

std::string information(const std::vector<std::string>& arguments) {
    return std::get<Information>(parseCommandLine(arguments)).text;
}

bool monitorsAsJson(const std::vector<std::string>& arguments) {
    return std::get<MonitorsOptions>(parseCommandLine(arguments)).json;
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

TEST(CommandLine, AsksForATableOrForJson) {
    EXPECT_FALSE(monitorsAsJson({"monitors"}));
    EXPECT_TRUE(monitorsAsJson({"monitors", "--json"}));
    EXPECT_TRUE(monitorsAsJson({"monitors", "--json", "--json"}));
}

TEST(CommandLine, has_a_watch_go_by_events_only_when_asked_to) {
    const auto eventsOnly = [](const std::vector<std::string>& arguments) {
        return std::get<WatchOptions>(parseCommandLine(arguments)).eventsOnly;
    };
    EXPECT_FALSE(eventsOnly({"watch"}));
    EXPECT_TRUE(eventsOnly({"watch", "--events-only"}));
    EXPECT_THAT(information({"watch", "--help"}),
                AllOf(HasSubstr("--events-only"), HasSubstr("(unreported)")));
}

TEST(CommandLine, AsksForTheHelpOfTheProgramOrOfACommand) {
    for (const char* const option : {"--help", "-h"}) {
        EXPECT_THAT(information({option}), AllOf(HasSubstr("Usage: vorlen-monitor [OPTIONS]"),
                                                 HasSubstr("monitors"), Not(HasSubstr("--json"))));
        EXPECT_THAT(information({"monitors", option}),
                    AllOf(HasSubstr("Usage: vorlen-monitor monitors"), HasSubstr("--json")));
    }
}

TEST(CommandLine, AsksForTheHelpOfKitModelsWhereTheyAreTaken) {
    for (const char* const command : {"status", "overview"}) {
        EXPECT_THAT(information({command, "--help"}),
                    ContainsRegex("\n  --kit-model NAME +The name of another kit model "
                                  "\\(repeatable\\)\n"));
    }
    for (const char* const command : {"monitors", "windows", "watch"}) {
        EXPECT_THAT(information({command, "--help"}), Not(HasSubstr("--kit-model")));
    }
}

TEST(CommandLine, AsksForTheVersion) {
    EXPECT_THAT(information({"--version"}), MatchesRegex("vorlen-monitor \\d+\\.\\d+\\.\\d+\n"));
}

TEST(CommandLine, NeedsACommand) {
    EXPECT_EQ(refusal({}),
              "no command given; the commands are: " COMMANDS "; see vorlen-monitor --help");
}

TEST(CommandLine, RefusesAnUnknownCommand) {
    const std::string expected =
        "unknown command \"screens\"; the commands are: " COMMANDS "; see vorlen-monitor --help";
    EXPECT_EQ(refusal({"screens"}), expected);
    EXPECT_EQ(refusal({"screens", "monitors"}), expected);
}

TEST(CommandLine, RefusesAnUnknownOption) {
    EXPECT_EQ(refusal({"--jsno"}), "unknown option \"--jsno\"; see vorlen-monitor --help");
    EXPECT_EQ(refusal({"--jsno", "monitors"}),
              "unknown option \"--jsno\"; see vorlen-monitor --help");
    EXPECT_EQ(refusal({"monitors", "--jsno=3"}),
              "unknown option \"--jsno=3\"; see vorlen-monitor monitors --help");
}

TEST(CommandLine, RefusesAnArgumentTooMany) {
    EXPECT_EQ(refusal({"monitors", "DISPLAY1"}),
              "unexpected argument \"DISPLAY1\" for vorlen-monitor monitors; "
              "see vorlen-monitor monitors --help");
}

TEST(CommandLine, RefusesAValueForAFlag) {
    EXPECT_EQ(refusal({"monitors", "--json=yes"}),
              "option json takes no value; see vorlen-monitor monitors --help");
}

} // namespace
} // namespace vorlen::tool
