#pragma once

#include <windows.h>

namespace tests {

enum class Owner {
    thisUser,    // with no more rights than this program
    moreRights,  // this user, with more rights, such as an administrator's
    anotherUser, // also the system itself
};

// Whose program the window belongs to, as far as this program can see.
Owner ownerOf(HWND window);

} // namespace tests
