#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace simulation {

// One function that an image imports by name, and its entry (slot) in the import address table.
struct Import {
    std::string library;
    std::string function;
    void** slot;
};

// Reads the headers of an image that is mapped into this process.
class LoadedImage {
public:
    explicit LoadedImage(HMODULE module) : image(module) {}

    const IMAGE_OPTIONAL_HEADER64& optionalHeader() const;
    std::vector<std::string> importedLibraries() const;
    std::vector<Import> imports() const;

private:
    template <typename T>
    T* at(std::size_t offset) const;
    const IMAGE_IMPORT_DESCRIPTOR* firstDescriptor() const;

    HMODULE image;
};

} // namespace simulation
