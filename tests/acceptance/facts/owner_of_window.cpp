#include "tests/acceptance/facts/owner_of_window.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>

namespace tests {

namespace {

struct CloseOwnedHandle {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, CloseOwnedHandle>;

OwnedHandle tokenOf(HANDLE process) {
    HANDLE token = nullptr;
    return OwnedHandle(OpenProcessToken(process, TOKEN_QUERY, &token) != FALSE ? token : nullptr);
}

// The buffer of a TOKEN_USER or a TOKEN_MANDATORY_LABEL with its SID.
struct TokenText {
    alignas(void*) std::array<std::byte, 256> bytes{};

    bool read(HANDLE token, TOKEN_INFORMATION_CLASS kind) {
        DWORD size = 0;
        return GetTokenInformation(token, kind, bytes.data(), static_cast<DWORD>(bytes.size()),
                                   &size) != FALSE;
    }
    // Both structures begin with a SID_AND_ATTRIBUTES.
    PSID sid() { return static_cast<SID_AND_ATTRIBUTES*>(static_cast<void*>(bytes.data()))->Sid; }
};

bool haveSameUser(HANDLE token, HANDLE ownToken) {
    TokenText user;
    TokenText ownUser;
    return user.read(token, TokenUser) && ownUser.read(ownToken, TokenUser) &&
           EqualSid(user.sid(), ownUser.sid()) != FALSE;
}

std::optional<DWORD> integrityOf(HANDLE token) {
    TokenText label;
    if (!label.read(token, TokenIntegrityLevel)) {
        return std::nullopt;
    }
    const DWORD last = *GetSidSubAuthorityCount(label.sid()) - DWORD{1};
    return *GetSidSubAuthority(label.sid(), last);
}

} // namespace

Owner ownerOf(HWND window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const OwnedHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    if (!process) {
        return GetLastError() == ERROR_ACCESS_DENIED ? Owner::anotherUser : Owner::thisUser;
    }
    const OwnedHandle token = tokenOf(process.get());
    if (!token) {
        // A program may look at another one of its user, but not at the token of one with more
        // rights.
        return GetLastError() == ERROR_ACCESS_DENIED ? Owner::moreRights : Owner::thisUser;
    }
    const OwnedHandle ownToken = tokenOf(GetCurrentProcess());
    if (!haveSameUser(token.get(), ownToken.get())) {
        return Owner::anotherUser;
    }
    return integrityOf(token.get()) > integrityOf(ownToken.get()) ? Owner::moreRights
                                                                  : Owner::thisUser;
}

} // namespace tests
