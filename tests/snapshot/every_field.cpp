#include "tests/snapshot/every_field.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tests {

using namespace snapshot;

namespace {

Monitor monitor() {
    Monitor monitor;
    monitor.handle = 0x10001;
    monitor.informationRead = true;
    monitor.deviceName = LR"(\\.\DISPLAY1)";
    monitor.rectangle = {-11, -12, 13, 14};
    monitor.workArea = {-21, -22, 23, 24};
    monitor.primary = true;
    monitor.currentMode = {31, -32, {3840, 2160, 60, 32, 1, 2, true}};
    monitor.offeredModes = {{1920, 1080, 59, 33, 3, 4, true}, {1280, 720, 50, 34, 5, 6, true}};
    return monitor;
}

DisplayPath path() {
    DisplayPath path;
    path.flags = 0x41;
    path.sourceAdapter = {42, -43};
    path.sourceId = 44;
    path.sourceModeIndex = 45;
    path.sourceStatusFlags = 0x46;
    path.targetAdapter = {47, -48};
    path.targetId = 49;
    path.targetModeIndex = 4294967295;
    path.targetStatusFlags = 0x51;
    path.targetAvailable = true;
    path.outputTechnology = 2147483648;
    path.rotation = 52;
    path.scaling = 53;
    path.refreshRate = {60000, 1001};
    path.scanLineOrdering = 54;
    path.sourceName = {55, LR"(\\.\DISPLAY2)"};
    path.targetName = {56,
                       0x57,
                       0x58,
                       0x59,
                       60,
                       L"Friendly name",
                       LR"(\\?\DISPLAY#VLN0001#4&2d1b9f&0&UID61#{e6f07b5f})"};
    path.preferredMode = {62, 63, 64};
    path.advancedColor = {65, 0x66, 67, 68};
    return path;
}

PathMode pathMode() {
    PathMode mode;
    mode.infoType = 71;
    mode.adapter = {72, -73};
    mode.id = 74;
    mode.width = 75;
    mode.height = 76;
    mode.pixelFormat = 77;
    mode.x = -78;
    mode.y = -79;
    mode.pixelRate = 18446744073709551615U;
    mode.horizontalFrequency = {81, 82};
    mode.verticalFrequency = {83, 84};
    mode.activeWidth = 85;
    mode.activeHeight = 86;
    mode.totalWidth = 87;
    mode.totalHeight = 88;
    mode.videoStandard = 89;
    mode.scanLineOrdering = 90;
    return mode;
}

Window window() {
    Window window;
    window.handle = 0x20002;
    window.titleLength = 91;
    window.title = L"A title";
    window.className = L"A class";
    window.visible = true;
    window.style = static_cast<std::int32_t>(0x94000000);
    window.extendedStyle = 0x95;
    window.root = 0x20003;
    window.exists = true;
    window.cloakingResult = static_cast<std::int32_t>(0x80004001);
    window.cloaked = 96;
    window.reason = "not a root window";
    return window;
}

} // namespace

Reading everyField() {
    Reading reading;
    reading.origin = "vorlen-monitor 9.8.7";
    reading.redacted = true;
    reading.process = {1, true, L"alice", "10.0.19045", "8.0", "9.8.6", "9.8.5", L"ONE;TWO"};
    reading.monitors = {monitor()};
    reading.displayConfiguration = {101, 2, 3, 104, {path()}, {pathMode()}};
    reading.wmi.steps = {{"CoInitializeEx", 1},
                         {"IEnumWbemClassObject::Next", static_cast<std::int32_t>(0x80041032)}};
    reading.wmi.objects = {
        {{{L"InstanceName", static_cast<std::int32_t>(0x80041002), 8, L"DISPLAY\\VLN0001\\1_0"}}}};
    reading.shellWindow = 0x20004;
    reading.windows = {window()};
    return reading;
}

std::string everyFieldRecording() {
    wchar_t program[MAX_PATH]{};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const auto file = std::filesystem::path(program).replace_filename("every_field.json");
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("there is no file " + file.string());
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace tests
