#include "monitor/module.h"

#include "monitor/service/monitor_data.h"
#include "monitor/wrappers.h"
#include "runtime/registration.h"

#include <memory>
#include <utility>

namespace vorlen {

namespace {

// Destroys a service that is still there when the library is unloaded, and so has to go before what
// the service's lists live on: their first use here makes it first.
struct ServiceOwner {
    ServiceOwner() {
        MonitorList::Get();
        WindowList::Get();
    }

    std::unique_ptr<MonitorData> service;
} owner;

} // namespace

void initModule() {
    if (!owner.service) {
        owner.service = std::make_unique<MonitorData>();
    }
}

void cleanupModule() {
    // The owner is empty before the service goes: nothing finds it while it is being destroyed.
    const std::unique_ptr<MonitorData> retired = std::move(owner.service);
}

namespace monitor_internal {

MonitorData* GetMonitorData() {
    return owner.service.get();
}

} // namespace monitor_internal

namespace {

// Registers the module while the library is being loaded, before anything of it can be called.
const struct Registration {
    Registration() {
        Vorlen_RegisterModuleVersion("monitor", 2, 0, 4);
        runtime_internal::RegisterMonitorWrapper(makeMonitorWrapper());
        runtime_internal::RegisterWindowEnumWrapper(makeWindowEnumWrapper());
        Vorlen_RegisterModuleInit(initModule);
        Vorlen_RegisterModuleCleanup(cleanupModule);
    }
} registration;

} // namespace
} // namespace vorlen
