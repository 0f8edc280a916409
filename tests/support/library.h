#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace tests {

// The full path of a library or program of the products: in the folder that the environment
// variable VORLEN_PRODUCTS names, or in the folder bin beside that of the tests.
std::filesystem::path product(const std::string& file);

// A library, or another program's image, that stays in the process while the object lives.
class Library {
public:
    enum class Mapping {
        loaded,    // ready to be called
        imageOnly, // neither its imports are bound nor its code is run
    };

    // The path may be relative to the folder of the test program. Throws std::runtime_error when
    // the file cannot be loaded.
    explicit Library(const std::filesystem::path& path, Mapping mapping = Mapping::loaded);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    HMODULE image() const { return module; }

    // Throws std::runtime_error when the library does not export the name.
    template <typename Function>
    void resolve(Function*& function, const std::string& name) const {
        function = reinterpret_cast<Function*>(addressOfExport(name));
    }

private:
    void* addressOfExport(const std::string& name) const;

    HMODULE module;
};

} // namespace tests
