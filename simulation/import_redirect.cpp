#include "simulation/import_redirect.h"

#include "platform/text.h"
#include "simulation/expect.h"
#include "simulation/loaded_image.h"

#include <stdexcept>

namespace simulation {

namespace {

std::string fileNameOf(HMODULE image) {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(image, path, MAX_PATH);
    return vorlen::toUtf8Lossy(path);
}

// Returns false when the import table cannot be made writable.
bool store(void** slot, void* function) {
    DWORD protection = 0;
    if (VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &protection) == FALSE) {
        return false;
    }
    *slot = function;
    VirtualProtect(slot, sizeof(*slot), protection, &protection);
    return true;
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
        if (!store(slot, replacement)) {
            throw std::runtime_error("the import table of " + fileNameOf(image) +
                                     " cannot be made writable");
        }
    }
}

ImportRedirect::~ImportRedirect() {
    for (void** const slot : slots) {
        // An image that was unloaded and loaded again at the same address has a new table.
        if (isMapped(slot, owner) && *slot == redirectedFunction) {
            SIMULATION_EXPECT(store(slot, originalFunction), "an import table cannot be restored");
        }
    }
}

} // namespace simulation
