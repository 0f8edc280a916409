#include "tools/vorlen-monitor/version_command.h"

#include <gtest/gtest.h>

namespace vorlen::tool {
namespace {

TEST(VersionCommand, shows_one_line_for_each_file) {
    EXPECT_EQ(versionText({"2.0.4", "2.0.3", "unknown"}),
              "vorlen-monitor 2.0.4\nlibvorlen_monitor.dll 2.0.3\nvorlen_runtime.dll unknown\n");
}

TEST(VersionCommand, warns_when_one_version_differs) {
    EXPECT_EQ(versionWarning({"2.0.4", "2.0.4", "2.0.4"}), "");
    EXPECT_NE(versionWarning({"2.0.3", "2.0.4", "2.0.4"}), "");
    EXPECT_NE(versionWarning({"2.0.4", "2.0.3", "2.0.4"}), "");
    EXPECT_NE(versionWarning({"2.0.4", "2.0.4", "unknown"}), "");
}

} // namespace
} // namespace vorlen::tool
