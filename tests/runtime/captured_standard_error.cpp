#include "tests/runtime/captured_standard_error.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace tests {

namespace {

constexpr int standardError = 2;

} // namespace

CapturedStandardError::CapturedStandardError(std::filesystem::path file)
    : path(std::move(file)), original(_dup(standardError)) {
    const int target =
        _wopen(path.c_str(), _O_CREAT | _O_TRUNC | _O_WRONLY | _O_TEXT, _S_IREAD | _S_IWRITE);
    if (original < 0 || target < 0 || _dup2(target, standardError) != 0) {
        throw std::runtime_error("standard error cannot be captured in " + path.string());
    }
    _close(target);
}

CapturedStandardError::~CapturedStandardError() {
    static_cast<void>(std::fflush(stderr));
    _dup2(original, standardError);
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

} // namespace tests
