#include "monitor/module.h"

#include "monitor/service/monitor_data.h"
#include "monitor/wrappers.h"
#include "platform/scope.h"
#include "runtime/registration.h"

#include <utility>

namespace vorlen {

namespace {

// An owning pointer without a destructor. Images that Windows unloads, or notifies of the end of
// the process, after this library may still call it: it then reads this pointer although its
// static objects have been destroyed.
MonitorData* service = nullptr;

// Destroys a service that still exists when the library is unloaded or the process ends. It waits
// for no thread: at the end of the process Windows has ended all others.
const struct ServiceEnd {
    // Constructs the function-local statics of the lists first, so that they are destroyed later.
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
    // A list can be read without a service when a window procedure has shut the service down.
    if (service == nullptr && !initialising && !WindowList::IsReading()) {
        const ScopedFlag marked(initialising);
        service = new MonitorData;
    }
}

void cleanupModule() {
    // The pointer is null before the destructor runs: code that it calls finds no service.
    delete std::exchange(service, nullptr);
}

namespace monitor_internal {

MonitorData* GetMonitorData() {
    return service;
}

} // namespace monitor_internal

namespace {

// Registers the module while the library is being loaded, before its functions can be called.
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
