#include "tools/vorlen-monitor-viewer/clipboard.h"

#include "platform/safe_text.h"
#include "tools/vorlen-monitor/failure.h"

#include <algorithm>
#include <memory>

namespace vorlen::viewer {

namespace {

class OpenedClipboard {
public:
    explicit OpenedClipboard(HWND owner) : opened(OpenClipboard(owner) != FALSE) {}
    ~OpenedClipboard() {
        if (opened) {
            CloseClipboard();
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;

    explicit operator bool() const { return opened; }

private:
    bool opened;
};

struct FreeGlobal {
    void operator()(HGLOBAL memory) const { GlobalFree(memory); }
};
using GlobalMemory = std::unique_ptr<void, FreeGlobal>;

// The reason is the last error.
tool::Failure unusable() {
    return {tool::ExitCode::output,
            "cannot use the clipboard: " + tool::systemError(GetLastError()) + "; try again"};
}

// With a terminating zero.
GlobalMemory globalCopy(const std::wstring& text) {
    GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t)));
    if (void* const target = memory ? GlobalLock(memory.get()) : nullptr) {
        std::copy_n(text.c_str(), text.size() + 1, static_cast<wchar_t*>(target));
        GlobalUnlock(memory.get());
        return memory;
    }
    throw unusable();
}

} // namespace

void copyToClipboard(HWND owner, const std::string& text) {
    GlobalMemory memory = globalCopy(withLineBreaks(text));
    const OpenedClipboard clipboard(owner);
    if (!clipboard || EmptyClipboard() == FALSE ||
        SetClipboardData(CF_UNICODETEXT, memory.get()) == nullptr) {
        throw unusable();
    }
    static_cast<void>(memory.release()); // now the system's
}

std::wstring withLineBreaks(const std::string& text) {
    std::wstring result;
    for (const wchar_t unit : toUtf16Lossy(text)) {
        if (unit == L'\n') {
            result += L'\r';
        }
        result += unit;
    }
    return result;
}

} // namespace vorlen::viewer
