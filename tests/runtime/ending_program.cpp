// A program that logs while it ends, for log_at_exit_test.cpp: its argument says how.
#include "simulation/import_redirect.h"
#include "tests/runtime/logging_image.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>

namespace tests {
namespace {

struct Images {
    Images() { endImage.resolve(callAtEnd, "callAtEnd"); }

    // In this order: at the end of the process their DllMain is called in reverse order.
    Library endImage{"end_image.dll"};
    Library runtime{product("vorlen_runtime.dll")};
    LoggingImage image{"logging_image_one.dll"};
    void (*callAtEnd)(void (*)()) = nullptr;
};

// Never destroyed: the libraries stay until the process ends.
Images& images() {
    static Images& theImages = *new Images;
    return theImages;
}

void logLastWords() {
    images().image.log(vorlen::log::level_enum::error, "last words");
}

HANDLE writingHasBegun = nullptr;

WINAPI BOOL neverDone(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*) {
    SetEvent(writingHasBegun);
    Sleep(INFINITE);
    return FALSE;
}

void logFromExitHandler() {
    images().image.isInitialized();
    if (std::atexit(logLastWords) != 0) {
        throw std::runtime_error("there is no room for one more exit handler");
    }
}

void logFromStaticObjectOfImage() {
    images().image.isInitialized();
    images().image.logWhenUnloaded("last words");
}

void logAfterRuntimeHasHandledTheEnd() {
    images().image.isInitialized();
    images().callAtEnd(logLastWords);
}

void logAfterThreadEndedInTheMiddleOfALine() {
    writingHasBegun = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    {
        const ImportRedirect write(images().runtime.image(), "WriteFile", addressOf(neverDone));
        std::thread(logLastWords).detach();
        WaitForSingleObject(writingHasBegun, INFINITE);
    }
    images().callAtEnd(logLastWords);
}

int run(const std::string& how) {
    static const std::map<std::string, void (*)()> ways = {
        {"exit-handler", logFromExitHandler},
        {"static-object", logFromStaticObjectOfImage},
        {"after-runtime", logAfterRuntimeHasHandledTheEnd},
        {"ended-thread", logAfterThreadEndedInTheMiddleOfALine},
    };
    ways.at(how)();
    return EXIT_SUCCESS;
}

} // namespace
} // namespace tests

int main(int count, char** arguments) {
    try {
        return tests::run(count == 2 ? arguments[1] : "");
    } catch (const std::exception& error) {
        std::cerr << "ending_program: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
