#include "tests/support/service_members.h"

#include "tests/support/private_member.h"

namespace tests {

using vorlen::MonitorData;

struct CachedMonitors {
    using type = std::vector<vorlen::ui::MonitorInfo> MonitorData::*;
    friend type memberOf(CachedMonitors);
};
template struct PrivateMember<CachedMonitors, &MonitorData::monitors>;

struct LastMonitorUpdate {
    using type = std::chrono::steady_clock::time_point MonitorData::*;
    friend type memberOf(LastMonitorUpdate);
};
template struct PrivateMember<LastMonitorUpdate, &MonitorData::lastMonitorUpdate>;

struct ListOfService {
    using type = std::unique_ptr<MonitorList> MonitorData::*;
    friend type memberOf(ListOfService);
};
template struct PrivateMember<ListOfService, &MonitorData::monitorList>;

std::vector<vorlen::ui::MonitorInfo>& cachedMonitors(MonitorData& service) {
    return service.*memberOf(CachedMonitors{});
}

std::chrono::steady_clock::time_point lastMonitorUpdate(const MonitorData& service) {
    return service.*memberOf(LastMonitorUpdate{});
}

std::unique_ptr<MonitorList>& monitorListOf(MonitorData& service) {
    return service.*memberOf(ListOfService{});
}

} // namespace tests
