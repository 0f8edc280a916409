#include "simulation/import_redirect.h"

#include "simulation/loaded_image.h"

#include <stdexcept>

namespace simulation {

namespace {

std::string fileNameOf(HMODULE image) {
    char path[MAX_PATH]{};
    GetModuleFileNameA(image, path, MAX_PATH);
    return path;
}

void store(void** slot, void* function) {
    DWORD protection = 0;
    if (VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &protection) == FALSE) {
        throw std::runtime_error("an import table cannot be made writable");
    }
    *slot = function;
    VirtualProtect(slot, sizeof(*slot), protection, &protection);
}

// Whether the slot is still part of the image. Tests unload the library under test.
bool isMapped(void** slot, HMODULE image) {
    MEMORY_BASIC_INFORMATION memory{};
    return VirtualQuery(slot, &memory, sizeof(memory)) != 0 && memory.State == MEM_COMMIT &&
           memory.AllocationBase == image;
}

std::vector<void**> slotsOf(HMODULE image, const std::string& function) {
    std::vector<void**> slots;
    for (const Import& import : LoadedImage(image).imports()) {
        if (import.function == function) {
            slots.push_back(import.slot);
        }
    }
    return slots;
}

} // namespace

void* importedFunction(HMODULE image, const std::string& function) {
    const std::vector<void**> slots = slotsOf(image, function);
    return slots.empty() ? nullptr : *slots.front();
}

ImportRedirect::ImportRedirect(HMODULE image, const std::string& function, void* replacement)
    : redirectedFunction(replacement), owner(image), slots(slotsOf(image, function)) {
    if (slots.empty()) {
        throw std::runtime_error(fileNameOf(image) + " does not import " + function);
    }
    originalFunction = *slots.front();
    for (void** const slot : slots) {
        store(slot, replacement);
    }
}

ImportRedirect::~ImportRedirect() {
    for (void** const slot : slots) {
        // An image that was unloaded and loaded again at the same address has a new table.
        if (isMapped(slot, owner) && *slot == redirectedFunction) {
            store(slot, originalFunction);
        }
    }
}

} // namespace simulation
