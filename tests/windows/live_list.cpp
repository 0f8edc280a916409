#include "tests/windows/live_list.h"

#include "tests/support/private_member.h"

#include <memory>

namespace tests {

struct WindowListOfService {
    using type = std::unique_ptr<WindowList> vorlen::MonitorData::*;
    friend type memberOf(WindowListOfService);
};
template struct PrivateMember<WindowListOfService, &vorlen::MonitorData::windowList>;

struct HandleSet {
    using type = std::unordered_set<HWND> WindowList::*;
    friend type memberOf(HandleSet);
};
template struct PrivateMember<HandleSet, &WindowList::windowSet>;

const WindowList* liveListOf(const vorlen::MonitorData& service) {
    return (service.*memberOf(WindowListOfService{})).get();
}

const std::unordered_set<HWND>& handleSetOf(const WindowList& list) {
    return list.*memberOf(HandleSet{});
}

} // namespace tests
