#pragma once

#include "tests/runtime/captured_standard_error.h"
#include "tests/runtime/logging_image.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tests {

using vorlen::log::level_enum;

constexpr const wchar_t* levelVariable = L"VORLEN_LOG_LEVEL";
constexpr const wchar_t* fileVariable = L"VORLEN_LOG_FILE";

// An empty folder that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path path;
};

// An environment variable that is as before when the object goes.
class EnvironmentVariable {
public:
    explicit EnvironmentVariable(const wchar_t* variable);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

    void set(const std::wstring& value) const;
    void unset() const;

private:
    const wchar_t* name;
    std::optional<std::wstring> original;
};

// A test of the shipped runtime's logger, freshly loaded together with two images that log. It
// starts without log variables.
class LoggerTest : public testing::Test {
protected:
    LoggerTest();

    // The runtime reads the variables when one of the images logs for the first time.
    void load();
    void unload();

    // Complete lines; each must end with a line end.
    std::vector<std::string> linesOnStandardError() const;
    std::vector<std::string> linesInFile() const;

    // The lines on standard error in which the runtime speaks for itself.
    std::vector<std::string> complaints() const;

    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path / "every line.log";
    const CapturedStandardError standardError{folder.path / "standard error"};
    const EnvironmentVariable level{levelVariable};
    const EnvironmentVariable fileName{fileVariable};
    std::optional<Library> runtime;
    std::optional<LoggingImage> one;
    std::optional<LoggingImage> two;
};

// The line of a log file without its time.
std::string withoutTime(const std::string& line);
std::vector<std::string> withoutTimes(std::vector<std::string> lines);

} // namespace tests
