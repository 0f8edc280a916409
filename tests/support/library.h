#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace tests {

// A library, or another program's image, that stays in the process while the object lives.
class Library {
public:
    enum class Mapping {
        loaded,    // ready to be called
        imageOnly, // neither its imports are bound nor its code is run
    };

    // The path is relative to the folder of the test program. Throws std::runtime_error when the
    // file cannot be loaded.
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
