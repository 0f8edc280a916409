#pragma once

#include "tools/vorlen-monitor/doctor/examination.h"
#include "tools/vorlen-monitor/doctor/finding.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

namespace vorlen::tool {

// A desktop on which the doctor finds nothing: the kit monitor \\.\DISPLAY1 "KIT 27" with a panel
// of 3840 x 2160 pixels at 60 Hz over HDMI, and to its right \\.\DISPLAY2 "Office" with 1920 x
// 1080. Tests change it.
class DoctorTest : public testing::Test {
protected:
    DoctorTest();

    snapshot::Monitor& kitMonitor() { return examination.reading.monitors[0]; }
    snapshot::DisplayPath& kitPath() { return examination.reading.displayConfiguration.paths[0]; }
    snapshot::DisplayPath& otherPath() { return examination.reading.displayConfiguration.paths[1]; }
    snapshot::PathMode& kitSource() { return examination.reading.displayConfiguration.modes[0]; }
    snapshot::PathMode& kitTarget() { return examination.reading.displayConfiguration.modes[1]; }

    // The mode that Windows reports for the kit monitor, and the library's answers on it.
    void setKitMode(std::int32_t width, std::int32_t height, std::int32_t hertz);

    // The library answers that it recognised no kit monitor.
    void recogniseNone();

    // Renames a monitor of the library's list and the target of its display path.
    void rename(std::size_t monitor, std::wstring_view name);

    // A visible window with the title; capturable and listed when it has no reason.
    snapshot::Window& addWindow(std::wstring_view title, const char* reason = nullptr);

    // Each finding as its severity and code, such as "error no-kit-monitor".
    std::vector<std::string> findings() const;

    // The only finding with the code. Fails the test when there is another number of them.
    Finding theFinding(std::string_view code) const;

    Examination examination;
};

void setText(VLChar16 (&field)[VORLEN_MONITOR_TEXT_UNITS], std::wstring_view text);

} // namespace vorlen::tool
