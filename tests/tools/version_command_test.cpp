#include "snapshot/reading.h"
#include "tools/vorlen-monitor/version_command.h"

#include <gmock/gmock.h>

namespace vorlen::tool {
namespace {

TEST(VersionCommand, shows_one_line_for_each_file) {
    EXPECT_EQ(versionText({"2.0.4", "2.0.3", "unknown"}),
              "vorlen-monitor 2.0.4\nlibvorlen_monitor.dll 2.0.3\nvorlen_runtime.dll unknown\n");
}

TEST(VersionCommand, shows_the_versions_of_a_reading) {
    snapshot::Reading reading;
    reading.origin = "vorlen-monitor 2.0.3";
    reading.process.moduleVersion = "2.0.4";
    EXPECT_EQ(versionText(reading),
              "vorlen-monitor 2.0.3\nlibvorlen_monitor.dll 2.0.4\nvorlen_runtime.dll unknown\n");
    reading.origin = "by hand\n";
    EXPECT_THAT(versionText(reading), testing::StartsWith("by hand<U+000A>\nlibvorlen"));
}

TEST(VersionCommand, warns_when_one_version_differs) {
    EXPECT_EQ(versionWarning({"2.0.4", "2.0.4", "2.0.4"}), "");
    EXPECT_NE(versionWarning({"2.0.3", "2.0.4", "2.0.4"}), "");
    EXPECT_NE(versionWarning({"2.0.4", "2.0.3", "2.0.4"}), "");
    EXPECT_NE(versionWarning({"2.0.4", "2.0.4", "unknown"}), "");
}

} // namespace
} // namespace vorlen::tool
