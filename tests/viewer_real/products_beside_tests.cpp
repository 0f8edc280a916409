// The viewer loads both libraries from the folder of its program, which is that of the tests here.
// The other program of the tests is started from there, too.
#include "tests/support/library.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <system_error>
#include <vector>

namespace {

class ProductsBesideTests final : public testing::Environment {
    void SetUp() override {
        wchar_t path[MAX_PATH]{};
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        const std::filesystem::path folder = std::filesystem::path(path).parent_path();
        for (const auto& file :
             {tests::product("vorlen_runtime.dll"), tests::product("libvorlen_monitor.dll"),
              folder.parent_path() / "window_maker.exe"}) {
            copies.push_back(folder / file.filename());
            // The C++ library of this toolchain does not overwrite a file.
            EXPECT_NE(CopyFileW(file.c_str(), copies.back().c_str(), FALSE), FALSE);
        }
    }

    void TearDown() override {
        for (const auto& copy : copies) {
            std::error_code ignored; // a file may still be in use
            std::filesystem::remove(copy, ignored);
        }
    }

    std::vector<std::filesystem::path> copies;
};

[[maybe_unused]] const auto* const environment =
    testing::AddGlobalTestEnvironment(new ProductsBesideTests);

} // namespace
