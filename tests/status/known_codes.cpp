#include "tests/status/known_codes.h"

namespace tests {

const std::vector<KnownCode>& knownCodes() {
    static const std::vector<KnownCode> codes = {
        {0, vorlen::ALL_GOOD, "ALL_GOOD", "All Good.", ""},
        {-1, vorlen::UNKNOWN_STATUS, "UNKNOWN_STATUS", "Unknown Status.", ""},
        {16, vorlen::MONITOR_OK, "MONITOR_OK", "OK.", ""},
        {17, vorlen::MONITOR_NOT_CONNECTED, "MONITOR_NOT_CONNECTED",
         "The monitor is not connected.",
         "No Vorlen monitor is connected.\n"
         "Please connect a Vorlen monitor for 3D viewing."},
        {18, vorlen::MONITOR_RESOLUTION_INCORRECT, "MONITOR_RESOLUTION_INCORRECT",
         "The monitor resolution is incorrect.",
         "The resolution of your Vorlen monitor is not the recommended specification.\n"
         "Please set the resolution of your Vorlen monitor to 4K(3840 * 2160) or 8K(7680 * 2160)."},
        {19, vorlen::MONITOR_REFRESH_RATE_INCORRECT, "MONITOR_REFRESH_RATE_INCORRECT",
         "The monitor refresh rate is incorrect.",
         "The refresh rate of your Vorlen monitor is not the recommended specification.\n"
         "Set the refresh rate of your Vorlen monitor to 60Hz or higher."},
        {20, vorlen::MONITOR_COLOR_FORMAT_INCORRECT, "MONITOR_COLOR_FORMAT_INCORRECT",
         "The monitor color format is incorrect.",
         "The color format of your Vorlen monitor is not the recommended specification.\n"
         "Set the color format of your Vorlen monitor to RGB."},
        {21, vorlen::MONITOR_GPU_NOT_OPTIMIZED, "MONITOR_GPU_NOT_OPTIMIZED",
         "Monitor GPU is not optimized.",
         "Optimization is not set for the Vorlen program.\n"
         "Please turn on graphics optimization for optimal viewing. (See manual)"},
        {22, vorlen::MONITOR_NOT_EXTENDED, "MONITOR_NOT_EXTENDED", "The monitor is not extended.",
         "The display settings on your Vorlen Monitor are not extended.\n"
         "Please set your Vorlen monitor to extended."},
        {32, vorlen::CAMERA_OK, "CAMERA_OK", "OK.", ""},
        {33, vorlen::CAMERA_INITIALIZE_FAILED, "CAMERA_INITIALIZE_FAILED",
         "Camera initialize failed.",
         "Your Vorlen Camera is being used by another program.\n"
         "Please stop using the camera in other programsand relaunch it."},
        {34, vorlen::CAMERA_NOT_CONNECTED, "CAMERA_NOT_CONNECTED", "The camera is not connected.",
         "No Vorlen camera is connected.\n"
         "Please connect a camera for perspective tracking."},
        {35, vorlen::CAMERA_NOT_USB3, "CAMERA_NOT_USB3",
         "The camera is not connected with a USB 3.0 cable.",
         "Your Vorlen camera cable is not connected to 3.0.\n"
         "Please connect your camera cable to 3.0 or higher for smooth camera operation."},
        {48, vorlen::EYE_TRACKING_OK, "EYE_TRACKING_OK", "OK.", "Eyetracking is fine."},
        {49, vorlen::EYE_TRACKING_INITIALIZE_FAILED, "EYE_TRACKING_INITIALIZE_FAILED",
         "Eye tracking initialize failed.",
         "An unknown error occurred.\n"
         "Please contact Vorlen.\n"
         "Click on the letter to send a mail with a status code."},
        {50, vorlen::EYE_TRACKING_INVALID_TYPE, "EYE_TRACKING_INVALID_TYPE",
         "Invalid eye tracking type.",
         "An unknown error occurred.\n"
         "Please contact Vorlen.\n"
         "Click on the letter to send a mail with a status code."},
        {51, vorlen::EYE_TRACKING_STARTED, "EYE_TRACKING_STARTED", "Eye tracking has started.", ""},
        {52, vorlen::EYE_TRACKING_STOPPED, "EYE_TRACKING_STOPPED", "Eye tracking has stopped.", ""},
        {80, vorlen::RENDER_OK, "RENDER_OK", "OK.", ""},
        {81, vorlen::RENDER_INITIALIZE_FAILED, "RENDER_INITIALIZE_FAILED",
         "Render initialize failed.",
         "An unknown error occurred.\n"
         "Please contact Vorlen.\n"
         "Click on the letter to send a mail with a status code."},
        {82, vorlen::RENDER_INTERFACE_NOT_LOADED, "RENDER_INTERFACE_NOT_LOADED",
         "Render interface is not loaded.",
         "An unknown error occurred.\n"
         "Please contact Vorlen.\n"
         "Click on the letter to send a mail with a status code."},
        {83, vorlen::RENDER_API_NOT_FOUND, "RENDER_API_NOT_FOUND", "Render API not found.",
         "An unknown error occurred.\n"
         "Please contact Vorlen.\n"
         "Click on the letter to send a mail with a status code."},
        {96, vorlen::LIBRARY_OK, "LIBRARY_OK", "OK.", ""},
        {97, vorlen::LIBRARY_ALREADY_INITIALIZED, "LIBRARY_ALREADY_INITIALIZED",
         "Vorlenlib is already initialized.", ""},
        {98, vorlen::LIBRARY_NOT_INITIALIZED, "LIBRARY_NOT_INITIALIZED",
         "Vorlenlib does not initialize.", ""},
        {99, vorlen::LIBRARY_VERSION_INVALID, "LIBRARY_VERSION_INVALID",
         "Vorlenlib version is not invalid.", ""},
        {100, vorlen::LIBRARY_NOT_FOUND, "LIBRARY_NOT_FOUND", "Vorlenlib not found.", ""},
        {101, vorlen::LIBRARY_ENTRY_POINT_NOT_FOUND, "LIBRARY_ENTRY_POINT_NOT_FOUND",
         "Vorlenlib entry point not found.", ""},
        {112, vorlen::COMMUNICATION_OK, "COMMUNICATION_OK", "OK.", "Communication is fine."},
        {113, vorlen::COMMUNICATION_INITIALIZE_FAILED, "COMMUNICATION_INITIALIZE_FAILED",
         "Communication initialize failed.",
         "An unknown error occurred.\n"
         "Please contact Vorlen.\n"
         "Click on the letter to send a mail with a status code."},
        {114, vorlen::COMMUNICATION_REQUEST_FAILED, "COMMUNICATION_REQUEST_FAILED",
         "Communication request failed.",
         "The server connection failed.\n"
         "Please connect to the internet to retrieve information."},
        {115, vorlen::COMMUNICATION_LOAD_PARAMETER_FAILED, "COMMUNICATION_LOAD_PARAMETER_FAILED",
         "Communication load parameter failed.",
         "The information to run the program could not be retrieved.\n"
         "Please connect to the internet to retrieve information."},
    };
    return codes;
}

} // namespace tests
