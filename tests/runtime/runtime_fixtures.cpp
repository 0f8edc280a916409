#include "tests/runtime/runtime_fixtures.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <utility>

namespace tests {

namespace {

constexpr int standardErrorFile = 2;

std::filesystem::path newFolder() {
    const auto place = std::filesystem::temp_directory_path();
    for (int number = 1;; ++number) {
        auto path = place / ("vorlen logger " + std::to_string(number));
        if (std::filesystem::create_directory(path)) {
            return path;
        }
    }
}

// Text mode, which the C library's standard error may be in, ends lines in two characters.
std::string withoutCarriageReturn(std::string line) {
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    if (start != text.size()) {
        throw std::runtime_error("the last line has no end: " + text.substr(start));
    }
    return lines;
}

bool isComplaint(const std::string& line) {
    return line.starts_with("vorlen_runtime: ");
}

} // namespace

TemporaryFolder::TemporaryFolder() : path(newFolder()) {}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

EnvironmentVariable::EnvironmentVariable(const wchar_t* variable) : name(variable) {
    wchar_t value[4096]{};
    if (GetEnvironmentVariableW(name, value, 4096) != 0) {
        original = value;
    }
    unset();
}

EnvironmentVariable::~EnvironmentVariable() {
    SetEnvironmentVariableW(name, original ? original->c_str() : nullptr);
}

void EnvironmentVariable::set(const std::wstring& value) const {
    SetEnvironmentVariableW(name, value.c_str());
}

void EnvironmentVariable::unset() const {
    SetEnvironmentVariableW(name, nullptr);
}

CapturedStandardError::CapturedStandardError(std::filesystem::path file)
    : path(std::move(file)), original(_dup(standardErrorFile)) {
    const int target =
        _wopen(path.c_str(), _O_CREAT | _O_TRUNC | _O_WRONLY | _O_TEXT, _S_IREAD | _S_IWRITE);
    if (original < 0 || target < 0 || _dup2(target, standardErrorFile) != 0) {
        throw std::runtime_error("standard error cannot be captured in " + path.string());
    }
    _close(target);
}

CapturedStandardError::~CapturedStandardError() {
    static_cast<void>(std::fflush(stderr));
    _dup2(original, standardErrorFile);
    _close(original);
}

std::string CapturedStandardError::text() const {
    return contentsOf(path);
}

std::string contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

LoggerTest::LoggerTest() {
    load();
}

void LoggerTest::load() {
    if (GetModuleHandleW(L"vorlen_runtime.dll") != nullptr) {
        throw std::logic_error("the runtime is loaded already: its log is set up only once");
    }
    // The images find the runtime by its base name among the loaded libraries.
    runtime.emplace(product("vorlen_runtime.dll"));
    one.emplace("runtime/logging_image_one.dll");
    two.emplace("runtime/logging_image_two.dll");
}

void LoggerTest::unload() {
    two.reset();
    one.reset();
    runtime.reset();
}

std::vector<std::string> LoggerTest::linesOnStandardError() const {
    auto lines = linesOf(standardError.text());
    std::erase_if(lines, isComplaint);
    return lines;
}

std::vector<std::string> LoggerTest::complaints() const {
    auto lines = linesOf(standardError.text());
    std::erase_if(lines, [](const std::string& line) { return !isComplaint(line); });
    std::transform(lines.begin(), lines.end(), lines.begin(), withoutCarriageReturn);
    return lines;
}

std::vector<std::string> LoggerTest::linesInFile() const {
    return linesOf(contentsOf(file));
}

std::string withoutTime(const std::string& line) {
    static const std::regex time(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z )");
    std::smatch match;
    if (!std::regex_search(line, match, time)) {
        throw std::runtime_error("the line starts with no time: " + line);
    }
    return match.suffix();
}

std::vector<std::string> withoutTimes(std::vector<std::string> lines) {
    std::transform(lines.begin(), lines.end(), lines.begin(), withoutTime);
    return lines;
}

} // namespace tests
