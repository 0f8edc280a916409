#include "simulation/loaded_image.h"
#include "tests/support/library.h"
#include "tests/support/simulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

namespace tests {
namespace {

const std::set<std::string> products = {"libvorlen_monitor.dll", "vorlen_runtime.dll",
                                        "vorlen-monitor.exe", "vorlen-monitor-viewer.exe"};

bool isSystemLibrary(const std::string& name) {
    wchar_t folder[MAX_PATH]{};
    GetSystemDirectoryW(folder, MAX_PATH);
    return std::filesystem::exists(std::filesystem::path(folder) / name);
}

class Product : public testing::TestWithParam<std::string> {
protected:
    const Library file{product(GetParam()), Library::Mapping::imageOnly};
    const LoadedImage image{file.image()};
};

TEST_P(Product, can_be_moved_in_memory_and_executes_no_data) {
    const unsigned characteristics = image.optionalHeader().DllCharacteristics;
    EXPECT_TRUE(characteristics & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(characteristics & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
    EXPECT_TRUE(characteristics & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    const auto& relocations = image.optionalHeader().DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC];
    EXPECT_NE(relocations.Size, 0u) << "an image without relocations stays where it was linked to";
}

TEST_P(Product, needs_only_the_system_and_the_other_products) {
    for (const std::string& library : image.importedLibraries()) {
        EXPECT_TRUE(products.contains(library) || isSystemLibrary(library)) << library;
    }
}

INSTANTIATE_TEST_SUITE_P(Products, Product, testing::ValuesIn(products), [](const auto& product) {
    std::string name = product.param;
    std::replace_if(
        name.begin(), name.end(), [](char letter) { return letter == '.' || letter == '-'; }, '_');
    return name;
});

} // namespace
} // namespace tests
