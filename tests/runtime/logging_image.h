// What the images of logging_image.cpp export: each logs with an object of its own, as every module
// and host does. Nothing of the logger is touched before the first call.
#pragma once

#include "runtime/logger.h"
#include "tests/support/library.h"

#include <string>

namespace tests {

using LogLine = void(vorlen::log::level_enum level, const std::string& message);
using LogByConvenience = void(const std::string& message);
using IsLoggerInitialized = bool();
using LoggerAddress = const void*();
using RegisterCallback = void(vorlen::log::DebugCallback callback);
using LogWhenUnloaded = void(const char* message);

struct LoggingImage {
    explicit LoggingImage(const std::filesystem::path& path) : library(path) {
        library.resolve(log, "logLine");
        library.resolve(logByEachMember, "logByEachMember");
        library.resolve(isInitialized, "isLoggerInitialized");
        library.resolve(loggerAddress, "loggerAddress");
        library.resolve(registerCallback, "registerCallback");
        library.resolve(logWhenUnloaded, "logWhenUnloaded");
    }

    Library library;
    LogLine* log = nullptr;
    LogByConvenience* logByEachMember = nullptr;
    IsLoggerInitialized* isInitialized = nullptr;
    LoggerAddress* loggerAddress = nullptr;
    RegisterCallback* registerCallback = nullptr;
    LogWhenUnloaded* logWhenUnloaded = nullptr; // the text must live as long as the image
};

} // namespace tests
