#include "monitor/module.h"

#include "monitor/service/monitor_data.h"
#include "monitor/wrappers.h"
#include "platform/scope.h"
#include "runtime/registration.h"

#include <utility>

namespace vorlen {

namespace {

// Owned, but without a destructor: it is also read after the module's static objects have been
// destroyed, by images that are unloaded, or handle the end of the process, later than this one.
MonitorData* service = nullptr;

// Destroys a service that is still there when the library is unloaded or the process ends. At the
// end of the process no other thread is left; this waits for none.
const struct ServiceEnd {
    // The first use of the lists makes what they need, which is thereby destroyed later.
    ServiceEnd() {
        MonitorList::Get();
        WindowList::Get();
    }
    ~ServiceEnd() { cleanupModule(); }
    ServiceEnd(const ServiceEnd&) = delete;
    ServiceEnd& operator=(const ServiceEnd&) = delete;
} serviceEnd;

} // namespace

void initModule() {
    static bool initialising = false;
    if (service == nullptr && !initialising) {
        const ScopedFlag marked(initialising);
        service = new MonitorData;
    }
}

void cleanupModule() {
    // Null before the service is destroyed: nothing finds it in the meantime.
    delete std::exchange(service, nullptr);
}

namespace monitor_internal {

MonitorData* GetMonitorData() {
    return service;
}

} // namespace monitor_internal

namespace {

// Registers the module while the library is being loaded, before anything of it can be called.
const struct Registration {
    Registration() {
        Vorlen_RegisterModuleVersion("monitor", VORLEN_VERSION_MAJOR, VORLEN_VERSION_MINOR,
                                     VORLEN_VERSION_PATCH);
        runtime_internal::RegisterMonitorWrapper(makeMonitorWrapper());
        runtime_internal::RegisterWindowEnumWrapper(makeWindowEnumWrapper());
        Vorlen_RegisterModuleInit(initModule);
        Vorlen_RegisterModuleCleanup(cleanupModule);
    }
} registration;

} // namespace
} // namespace vorlen
