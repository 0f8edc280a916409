#pragma once

#include "tests/fixtures/shipped_runtime.h"
#include "tests/runtime/logging_image.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tests {

using vorlen::log::level_enum;

// An empty folder that is removed with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path path;
};

// An environment variable that has its earlier value again when the object is destroyed.
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

// Standard error of this process, of the C library and of the system alike, goes to a file while
// the object lives.
class CapturedStandardError {
public:
    explicit CapturedStandardError(std::filesystem::path file);
    ~CapturedStandardError();
    CapturedStandardError(const CapturedStandardError&) = delete;
    CapturedStandardError& operator=(const CapturedStandardError&) = delete;

    // What has been written so far, byte for byte.
    std::string text() const;

private:
    std::filesystem::path path;
    int original;
};

std::string contentsOf(const std::filesystem::path& file);

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
    const EnvironmentVariable level{L"VORLEN_LOG_LEVEL"};
    const EnvironmentVariable fileName{L"VORLEN_LOG_FILE"};
    std::optional<Library> runtime;
    std::optional<LoggingImage> one;
    std::optional<LoggingImage> two;
};

// A test of what the shipped runtime keeps for modules.
class RegistrationTest : public testing::Test {
protected:
    // The one line that was written, without its end.
    std::string complaint() const {
        const std::string text = standardError.text();
        EXPECT_TRUE(text.ends_with("\n")) << text;
        return text.substr(0, text.find_first_of("\r\n"));
    }

    const TemporaryFolder folder;
    const CapturedStandardError standardError{folder.path / "standard error"};
    const ShippedRuntime runtime;
};

// The line of a log file without its time.
std::string withoutTime(const std::string& line);
std::vector<std::string> withoutTimes(std::vector<std::string> lines);

} // namespace tests
