#include "tests/runtime/logging_image.h"

#define EXPORT extern "C" __declspec(dllexport)

namespace {

using vorlen::log::vllogger;

// Its destructor runs when the image is unloaded or the process ends.
struct LastWords {
    LastWords() = default;
    ~LastWords() {
        if (message != nullptr) {
            vllogger::instance()->error(message);
        }
    }
    LastWords(const LastWords&) = delete;
    LastWords& operator=(const LastWords&) = delete;

    const char* message = nullptr;
} lastWords;

} // namespace

EXPORT void logLine(vorlen::log::level_enum level, const std::string& message) {
    vllogger::instance()->log(level, message, false);
}

EXPORT void logByEachMember(const std::string& message) {
    vllogger::instance()->trace(message);
    vllogger::instance()->debug(message);
    vllogger::instance()->info(message);
    vllogger::instance()->warn(message);
    vllogger::instance()->error(message);
    vllogger::instance()->critical(message);
}

EXPORT bool isLoggerInitialized() {
    return vllogger::instance()->isInitialized();
}

EXPORT const void* loggerAddress() {
    return vllogger::instance();
}

EXPORT void registerCallback(vorlen::log::DebugCallback callback) {
    vllogger::RegisterDebugCallback(callback);
}

EXPORT void logWhenUnloaded(const char* message) {
    lastWords.message = message;
}
