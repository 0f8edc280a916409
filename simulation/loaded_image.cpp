#include "simulation/loaded_image.h"

#include <stdexcept>

namespace simulation {

template <typename T>
T* LoadedImage::at(std::size_t offset) const {
    void* const address = reinterpret_cast<std::byte*>(image) + offset;
    return static_cast<T*>(address);
}

const IMAGE_OPTIONAL_HEADER64& LoadedImage::optionalHeader() const {
    const auto* const dos = at<IMAGE_DOS_HEADER>(0);
    const auto* const headers = at<IMAGE_NT_HEADERS64>(static_cast<std::size_t>(dos->e_lfanew));
    if (dos->e_magic != IMAGE_DOS_SIGNATURE || headers->Signature != IMAGE_NT_SIGNATURE ||
        headers->OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC) {
        throw std::runtime_error("the module is not a 64-bit image");
    }
    return headers->OptionalHeader;
}

const IMAGE_IMPORT_DESCRIPTOR* LoadedImage::firstDescriptor() const {
    const auto& directory = optionalHeader().DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    static constexpr IMAGE_IMPORT_DESCRIPTOR none{};
    return directory.Size == 0 ? &none : at<IMAGE_IMPORT_DESCRIPTOR>(directory.VirtualAddress);
}

std::vector<std::string> LoadedImage::importedLibraries() const {
    std::vector<std::string> libraries;
    for (const auto* descriptor = firstDescriptor(); descriptor->Name != 0; ++descriptor) {
        libraries.emplace_back(at<const char>(descriptor->Name));
    }
    return libraries;
}

std::vector<Import> LoadedImage::imports() const {
    std::vector<Import> result;
    for (const auto* descriptor = firstDescriptor(); descriptor->Name != 0; ++descriptor) {
        // The loader overwrites only the addresses. The names stay in OriginalFirstThunk.
        const auto* name = at<IMAGE_THUNK_DATA64>(descriptor->OriginalFirstThunk);
        auto* slot = at<void*>(descriptor->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (!IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) {
                const auto* const byName = at<IMAGE_IMPORT_BY_NAME>(name->u1.AddressOfData);
                result.push_back({at<const char>(descriptor->Name),
                                  reinterpret_cast<const char*>(byName->Name), slot});
            }
        }
    }
    return result;
}

} // namespace simulation
