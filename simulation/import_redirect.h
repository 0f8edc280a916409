#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace simulation {

// Rewrites one entry of the import address table of a loaded image, whichever library it comes
// from: while the object lives, the image's calls of the function go to the replacement. Nothing
// else in the process notices.
//
// Redirections of one function may be nested. An image that has been unloaded meanwhile is left
// alone.
class ImportRedirect {
public:
    // Throws std::runtime_error when the image does not import the function. C++ functions are
    // named as they are mangled.
    ImportRedirect(HMODULE image, const std::string& function, void* replacement);
    ~ImportRedirect();
    ImportRedirect(const ImportRedirect&) = delete;
    ImportRedirect& operator=(const ImportRedirect&) = delete;

    // What the image called before.
    void* original() const { return originalFunction; }

private:
    void* redirectedFunction;
    void* originalFunction = nullptr;
    HMODULE owner;
    std::vector<void**> slots;
};

// What the image calls under this name; null when it does not import the function.
void* importedFunction(HMODULE image, const std::string& function);

// The address of a function as table entries hold it.
template <typename Result, typename... Arguments>
void* addressOf(Result (*function)(Arguments...)) {
    return reinterpret_cast<void*>(function);
}

} // namespace simulation
