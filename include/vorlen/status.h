// vorlen/status.h - the status codes that all components of the kit share, and their texts. C++;
// interfaces pass the codes as 32-bit integers.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

namespace vorlen {

// The advice for faults inside the kit: users can only report them.
#define VORLEN_STATUS_ASK_FOR_HELP                                                                 \
    "An unknown error occurred.\nPlease contact Vorlen.\n"                                         \
    "Click on the letter to send a mail with a status code."

// Every code once: name, value, short text, text for users. Each component has a group of values:
// monitor from 16, camera from 32, eye tracking from 48, rendering from 80, library from 96,
// communication from 112. The first code of a group means that the component works.
// Given: values and texts appear in users' reports and must not change, including the double
// negative of 99 and the missing space of 33.
#define VORLEN_STATUS_LIST(X)                                                                      \
    X(ALL_GOOD, 0, "All Good.", "")                                                                \
    X(UNKNOWN_STATUS, -1, "Unknown Status.", "")                                                   \
    X(MONITOR_OK, 16, "OK.", "")                                                                   \
    X(MONITOR_NOT_CONNECTED, 17, "The monitor is not connected.",                                  \
      "No Vorlen monitor is connected.\n"                                                          \
      "Please connect a Vorlen monitor for 3D viewing.")                                           \
    X(MONITOR_RESOLUTION_INCORRECT, 18, "The monitor resolution is incorrect.",                    \
      "The resolution of your Vorlen monitor is not the recommended specification.\n"              \
      "Please set the resolution of your Vorlen monitor to 4K(3840 * 2160) or 8K(7680 * "          \
      "2160).")                                                                                    \
    X(MONITOR_REFRESH_RATE_INCORRECT, 19, "The monitor refresh rate is incorrect.",                \
      "The refresh rate of your Vorlen monitor is not the recommended specification.\n"            \
      "Set the refresh rate of your Vorlen monitor to 60Hz or higher.")                            \
    X(MONITOR_COLOR_FORMAT_INCORRECT, 20, "The monitor color format is incorrect.",                \
      "The color format of your Vorlen monitor is not the recommended specification.\n"            \
      "Set the color format of your Vorlen monitor to RGB.")                                       \
    X(MONITOR_GPU_NOT_OPTIMIZED, 21, "Monitor GPU is not optimized.",                              \
      "Optimization is not set for the Vorlen program.\n"                                          \
      "Please turn on graphics optimization for optimal viewing. (See manual)")                    \
    X(MONITOR_NOT_EXTENDED, 22, "The monitor is not extended.",                                    \
      "The display settings on your Vorlen Monitor are not extended.\n"                            \
      "Please set your Vorlen monitor to extended.")                                               \
    X(CAMERA_OK, 32, "OK.", "")                                                                    \
    X(CAMERA_INITIALIZE_FAILED, 33, "Camera initialize failed.",                                   \
      "Your Vorlen Camera is being used by another program.\n"                                     \
      "Please stop using the camera in other programsand relaunch it.")                            \
    X(CAMERA_NOT_CONNECTED, 34, "The camera is not connected.",                                    \
      "No Vorlen camera is connected.\n"                                                           \
      "Please connect a camera for perspective tracking.")                                         \
    X(CAMERA_NOT_USB3, 35, "The camera is not connected with a USB 3.0 cable.",                    \
      "Your Vorlen camera cable is not connected to 3.0.\n"                                        \
      "Please connect your camera cable to 3.0 or higher for smooth camera operation.")            \
    X(EYE_TRACKING_OK, 48, "OK.", "Eyetracking is fine.")                                          \
    X(EYE_TRACKING_INITIALIZE_FAILED, 49, "Eye tracking initialize failed.",                       \
      VORLEN_STATUS_ASK_FOR_HELP)                                                                  \
    X(EYE_TRACKING_INVALID_TYPE, 50, "Invalid eye tracking type.", VORLEN_STATUS_ASK_FOR_HELP)     \
    X(EYE_TRACKING_STARTED, 51, "Eye tracking has started.", "")                                   \
    X(EYE_TRACKING_STOPPED, 52, "Eye tracking has stopped.", "")                                   \
    X(RENDER_OK, 80, "OK.", "")                                                                    \
    X(RENDER_INITIALIZE_FAILED, 81, "Render initialize failed.", VORLEN_STATUS_ASK_FOR_HELP)       \
    X(RENDER_INTERFACE_NOT_LOADED, 82, "Render interface is not loaded.",                          \
      VORLEN_STATUS_ASK_FOR_HELP)                                                                  \
    X(RENDER_API_NOT_FOUND, 83, "Render API not found.", VORLEN_STATUS_ASK_FOR_HELP)               \
    X(LIBRARY_OK, 96, "OK.", "")                                                                   \
    X(LIBRARY_ALREADY_INITIALIZED, 97, "Vorlenlib is already initialized.", "")                    \
    X(LIBRARY_NOT_INITIALIZED, 98, "Vorlenlib does not initialize.", "")                           \
    X(LIBRARY_VERSION_INVALID, 99, "Vorlenlib version is not invalid.", "")                        \
    X(LIBRARY_NOT_FOUND, 100, "Vorlenlib not found.", "")                                          \
    X(LIBRARY_ENTRY_POINT_NOT_FOUND, 101, "Vorlenlib entry point not found.", "")                  \
    X(COMMUNICATION_OK, 112, "OK.", "Communication is fine.")                                      \
    X(COMMUNICATION_INITIALIZE_FAILED, 113, "Communication initialize failed.",                    \
      VORLEN_STATUS_ASK_FOR_HELP)                                                                  \
    X(COMMUNICATION_REQUEST_FAILED, 114, "Communication request failed.",                          \
      "The server connection failed.\n"                                                            \
      "Please connect to the internet to retrieve information.")                                   \
    X(COMMUNICATION_LOAD_PARAMETER_FAILED, 115, "Communication load parameter failed.",            \
      "The information to run the program could not be retrieved.\n"                               \
      "Please connect to the internet to retrieve information.")

enum VLStatus : std::int32_t {
#define VORLEN_STATUS_VALUE(name, value, shortText, longText) name = (value),
    VORLEN_STATUS_LIST(VORLEN_STATUS_VALUE)
#undef VORLEN_STATUS_VALUE
};

// The texts for users, with advice on what to do; empty for codes that need none. The tables have
// no operator[]: a component uses find() and decides what it shows for an unknown code, such as
// the entry of UNKNOWN_STATUS. Every translation unit that includes this header has its own
// tables, constructed when its image is loaded: compare entries by value, not by address.
static const std::unordered_map<VLStatus, std::string> StatusMessages = {
#define VORLEN_STATUS_LONG(name, value, shortText, longText) {name, longText},
    VORLEN_STATUS_LIST(VORLEN_STATUS_LONG)
#undef VORLEN_STATUS_LONG
};

// The technical texts. Every code has one.
static const std::unordered_map<VLStatus, std::string> StatusShortMessages = {
#define VORLEN_STATUS_SHORT(name, value, shortText, longText) {name, shortText},
    VORLEN_STATUS_LIST(VORLEN_STATUS_SHORT)
#undef VORLEN_STATUS_SHORT
};

// The enumerator's name of a code, or null for a value that is not a code.
constexpr const char* statusName(std::int32_t code) {
    switch (code) {
#define VORLEN_STATUS_NAME(name, value, shortText, longText)                                       \
    case value:                                                                                    \
        return #name;
        VORLEN_STATUS_LIST(VORLEN_STATUS_NAME)
#undef VORLEN_STATUS_NAME
    default:
        return nullptr;
    }
}

// The same texts for inline functions and for static objects, which cannot use the tables of a
// translation unit.
struct StatusTexts {
    std::int32_t code;
    const char* shortMessage;
    const char* message;
};

inline constexpr StatusTexts statusTexts[] = {
#define VORLEN_STATUS_TEXTS(name, value, shortText, longText) {value, shortText, longText},
    VORLEN_STATUS_LIST(VORLEN_STATUS_TEXTS)
#undef VORLEN_STATUS_TEXTS
};

// Null for a value that is not a code.
constexpr const char* statusShortMessage(std::int32_t code) {
    for (const StatusTexts& texts : statusTexts) {
        if (texts.code == code) {
            return texts.shortMessage;
        }
    }
    return nullptr;
}

constexpr const char* statusMessage(std::int32_t code) {
    for (const StatusTexts& texts : statusTexts) {
        if (texts.code == code) {
            return texts.message;
        }
    }
    return nullptr;
}

#undef VORLEN_STATUS_LIST
#undef VORLEN_STATUS_ASK_FOR_HELP

} // namespace vorlen
