// What the check of the heaps has to find. Not part of another test program.

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

// Volatile: the compiler must not see what is wrong here.
char* volatile block = nullptr;

TEST(BrokenHeap, written_behind_a_block) {
    block = static_cast<char*>(std::malloc(24));
    block[24] = 'x';
}

TEST(BrokenHeap, block_freed_twice) {
    block = static_cast<char*>(std::malloc(24));
    std::free(block);
    std::free(block);
}

} // namespace
