#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace simulation {

// Redirects an imported function of a loaded image: rewrites its entries in the import address
// table, whatever library it is imported from. While the object lives, the image's calls go to the
// replacement. Other images in the process are not affected.
//
// Redirections of the same function may be nested. The destructor does nothing when the image was
// unloaded.
class ImportRedirect {
public:
    // Throws std::runtime_error when the image does not import the function. C++ functions are
    // given by their mangled names.
    ImportRedirect(HMODULE image, const std::string& function, void* replacement);
    ~ImportRedirect();
    ImportRedirect(const ImportRedirect&) = delete;
    ImportRedirect& operator=(const ImportRedirect&) = delete;

    // The function that the image called before.
    void* original() const { return originalFunction; }

private:
    void* redirectedFunction;
    void* originalFunction = nullptr;
    HMODULE owner;
    std::vector<void**> slots;
};

// The function that the image calls by this name; null when the image does not import it.
void* importedFunction(HMODULE image, const std::string& function);

// The address of a function in the type of table entries.
template <typename Result, typename... Arguments>
void* addressOf(Result (*function)(Arguments...)) {
    return reinterpret_cast<void*>(function);
}

} // namespace simulation
