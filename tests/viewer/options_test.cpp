#include "tools/vorlen-monitor-viewer/options.h"
#include "tools/vorlen-monitor/failure.h"

#include <gmock/gmock.h>

namespace vorlen::viewer {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string refusal(const std::vector<std::string>& arguments) {
    try {
        parseOptions(arguments);
    } catch (const tool::Failure& failure) {
        EXPECT_EQ(failure.exitCode(), tool::ExitCode::usage);
        return failure.what();
    }
    return "accepted";
}

TEST(ViewerOptions, are_all_absent_at_first) {
    const Options options = parseOptions({});
    EXPECT_EQ(options.replay, std::nullopt);
    EXPECT_EQ(options.picture, std::nullopt);
    EXPECT_THAT(options.kitModels, IsEmpty());
    EXPECT_EQ(options.help, std::nullopt);
}

TEST(ViewerOptions, have_files_and_kit_models) {
    const Options options = parseOptions(
        {"--replay", "a.json", "--kit-model", "A", "--picture", "a.png", "--kit-model", "B"});
    EXPECT_EQ(options.replay, "a.json");
    EXPECT_EQ(options.picture, "a.png");
    EXPECT_THAT(options.kitModels, ElementsAre("A", "B"));
}

TEST(ViewerOptions, offer_help) {
    EXPECT_THAT(parseOptions({"--help"}).help.value_or(""), HasSubstr("--picture"));
}

TEST(ViewerOptions, refuse_what_they_do_not_know) {
    EXPECT_EQ(refusal({"--reply", "a"}),
              "unknown option \"--reply\"; see vorlen-monitor-viewer --help");
    EXPECT_EQ(refusal({"a.json"}),
              "unexpected argument \"a.json\"; see vorlen-monitor-viewer --help");
    EXPECT_THAT(refusal({"--replay"}), HasSubstr("--replay"));
    EXPECT_EQ(refusal({"--kit-model", "A", "B"}),
              "unexpected argument \"B\"; see vorlen-monitor-viewer --help");
}

TEST(ViewerOptions, ask_for_a_picture_also_when_they_are_wrong) {
    EXPECT_TRUE(askForPicture({"--nonsense", "--picture"}));
    EXPECT_TRUE(askForPicture({"--picture=a.png"}));
    EXPECT_FALSE(askForPicture({"--replay", "picture"}));
}

} // namespace
} // namespace vorlen::viewer
