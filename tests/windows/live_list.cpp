#include "tests/windows/live_list.h"

#include "tests/support/private_member.h"

#include <memory>

namespace tests {

struct WindowListOfService {
    using type = std::unique_ptr<WindowList> vorlen::MonitorData::*;
    friend type memberOf(WindowListOfService);
};
template struct PrivateMember<WindowListOfService, &vorlen::MonitorData::windowList>;

struct Records {
    using type = std::vector<WindowInfo> WindowList::*;
    friend type memberOf(Records);
};
template struct PrivateMember<Records, &WindowList::windows>;

struct Handles {
    using type = std::unordered_set<HWND> WindowList::*;
    friend type memberOf(Handles);
};
template struct PrivateMember<Handles, &WindowList::windowSet>;

const WindowList* liveListOf(const vorlen::MonitorData& service) {
    return (service.*memberOf(WindowListOfService{})).get();
}

std::vector<HWND> listedHandlesOf(const WindowList& list) {
    std::vector<HWND> handles;
    for (const WindowInfo& window : list.*memberOf(Records{})) {
        handles.push_back(window.hwnd);
    }
    return handles;
}

std::unordered_set<HWND> handleSetOf(const WindowList& list) {
    return list.*memberOf(Handles{});
}

} // namespace tests
