#pragma once

#include "simulation/current.h"
#include "simulation/import_redirect.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstddef>
#include <vector>

namespace tests {

// Overwrites what an image gives back to the C library's heap, and keeps it until this object is
// destroyed: a later read finds values that show, and a later write fails the test.
class PoisonedMemory : private Current<PoisonedMemory> {
public:
    explicit PoisonedMemory(HMODULE image)
        : redirect(image, "free", addressOf(poison)),
          realFree(reinterpret_cast<void (*)(void*)>(redirect.original())) {}

    ~PoisonedMemory() {
        for (unsigned char* const block : blocks) {
            bool untouched = true;
            for (std::size_t i = 0; i < _msize(block); ++i) {
                untouched = untouched && block[i] == poisonAt(i);
            }
            EXPECT_TRUE(untouched) << "memory was written to after it had been given back";
            realFree(block);
        }
    }
    PoisonedMemory(const PoisonedMemory&) = delete;
    PoisonedMemory& operator=(const PoisonedMemory&) = delete;

private:
    friend class Current<PoisonedMemory>;

    // Two pointers in a row differ, so that no container looks empty.
    static unsigned char poisonAt(std::size_t i) {
        return static_cast<unsigned char>(0x5D + i / sizeof(void*));
    }

    static void poison(void* memory) {
        if (memory == nullptr) {
            return;
        }
        auto* const block = static_cast<unsigned char*>(memory);
        for (std::size_t i = 0; i < _msize(block); ++i) {
            block[i] = poisonAt(i);
        }
        get().blocks.push_back(block);
    }

    ImportRedirect redirect;
    void (*realFree)(void*);
    std::vector<unsigned char*> blocks;
};

} // namespace tests
