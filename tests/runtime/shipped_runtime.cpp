#include "tests/runtime/shipped_runtime.h"

#include "tests/support/mangled_names.h"

namespace tests {

ShippedRuntime::ShippedRuntime() {
    library.resolve(initialize, "Vorlen_Initialize");
    library.resolve(shutdown, "Vorlen_Shutdown");
    library.resolve(getModuleVersion, "Vorlen_GetModuleVersion");
    library.resolve(registerVersion, "Vorlen_RegisterModuleVersion");
    library.resolve(registerInit, "Vorlen_RegisterModuleInit");
    library.resolve(registerCleanup, "Vorlen_RegisterModuleCleanup");
    library.resolve(registerMonitorWrapper,
                    "_ZN6vorlen16runtime_internal22RegisterMonitorWrapperERKNS_14MonitorWrapperE");
    library.resolve(
        registerWindowEnumWrapper,
        "_ZN6vorlen16runtime_internal25RegisterWindowEnumWrapperERKNS_17WindowEnumWrapperE");
    library.resolve(getMonitorWrapper, "_ZN6vorlen16runtime_internal17GetMonitorWrapperEv");
    library.resolve(getWindowEnumWrapper, "_ZN6vorlen16runtime_internal20GetWindowEnumWrapperEv");
}

LoadedCore::LoadedCore() {
    library.resolve(instanceFunction, mangled::instance);
    library.resolve(clearFunction, mangled::clearMonitorList);
    library.resolve(addFunction, mangled::addMonitorItem);
    library.resolve(itemsFunction, mangled::getMonitorItems);
    library.resolve(nameFunction, mangled::getMonitorName);
    library.resolve(setNameFunction, mangled::setMonitorName);
    library.resolve(modelNameFunction, mangled::getMonitorModelName);
    library.resolve(setModelNameFunction, mangled::setMonitorModelName);
    library.resolve(modelsFunction, mangled::getVorlenModelName);
    library.resolve(makeKnownFunction, mangled::setVorlenModelName);
    library.resolve(cameraFunction, mangled::getDefaultCameraName);
}

} // namespace tests
