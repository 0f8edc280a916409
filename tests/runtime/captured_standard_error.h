#pragma once

#include <filesystem>
#include <string>

namespace tests {

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

} // namespace tests
