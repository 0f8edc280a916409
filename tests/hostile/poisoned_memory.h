#pragma once

#include "tests/support/current.h"
#include "tests/support/import_redirect.h"

#include <windows.h>

#include <malloc.h>

#include <cstring>

namespace tests {

// Overwrites what an image gives back to the C library's heap, so that a later look at it shows.
class PoisonedMemory : private Current<PoisonedMemory> {
public:
    explicit PoisonedMemory(HMODULE image)
        : redirect(image, "free", addressOf(poisonAndFree)),
          realFree(reinterpret_cast<void (*)(void*)>(redirect.original())) {}

private:
    friend class Current<PoisonedMemory>;

    static void poisonAndFree(void* block) {
        if (block != nullptr) {
            std::memset(block, 0x5D, _msize(block));
        }
        get().realFree(block);
    }

    ImportRedirect redirect;
    void (*realFree)(void*);
};

} // namespace tests
