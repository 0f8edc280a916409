#include "tests/support/library.h"

#include <stdexcept>

namespace tests {

namespace {

std::filesystem::path programFolder() {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path();
}

} // namespace

std::filesystem::path product(const std::string& file) {
    wchar_t chosen[MAX_PATH]{};
    if (GetEnvironmentVariableW(L"VORLEN_PRODUCTS", chosen, MAX_PATH) != 0) {
        return std::filesystem::path(chosen) / file;
    }
    std::filesystem::path folder = programFolder();
    while (folder.filename() != "tests") {
        folder = folder.parent_path();
    }
    return folder.parent_path() / "bin" / file;
}

Library::Library(const std::filesystem::path& path, Mapping mapping) {
    const auto fullPath = (programFolder() / path).lexically_normal().make_preferred();
    const DWORD flags = mapping == Mapping::imageOnly ? DWORD{DONT_RESOLVE_DLL_REFERENCES} : 0;
    module = LoadLibraryExW(fullPath.c_str(), nullptr, flags);
    if (module == nullptr) {
        throw std::runtime_error("cannot load " + fullPath.string() + ", error " +
                                 std::to_string(GetLastError()));
    }
}

Library::~Library() {
    FreeLibrary(module);
}

void* Library::addressOfExport(const std::string& name) const {
    const FARPROC address = GetProcAddress(module, name.c_str());
    if (address == nullptr) {
        throw std::runtime_error("the library does not export " + name);
    }
    return reinterpret_cast<void*>(address);
}

} // namespace tests
