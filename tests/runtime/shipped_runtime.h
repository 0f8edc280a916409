#pragma once

#include "include/vorlen/runtime.h"
#include "runtime/core.h"
#include "runtime/registration.h"
#include "tests/support/library.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

// The shipped vorlen_runtime.dll, freshly loaded, with nothing registered and a core of its own.
class ShippedRuntime {
    Library library{"../bin/vorlen_runtime.dll"};

public:
    ShippedRuntime();

    decltype(Vorlen_Initialize)* initialize = nullptr;
    decltype(Vorlen_Shutdown)* shutdown = nullptr;
    decltype(Vorlen_GetModuleVersion)* getModuleVersion = nullptr;
    decltype(Vorlen_RegisterModuleVersion)* registerVersion = nullptr;
    decltype(Vorlen_RegisterModuleInit)* registerInit = nullptr;
    decltype(Vorlen_RegisterModuleCleanup)* registerCleanup = nullptr;
    decltype(vorlen::runtime_internal::RegisterMonitorWrapper)* registerMonitorWrapper = nullptr;
    decltype(vorlen::runtime_internal::RegisterWindowEnumWrapper)* registerWindowEnumWrapper =
        nullptr;
    decltype(vorlen::runtime_internal::GetMonitorWrapper)* getMonitorWrapper = nullptr;
    decltype(vorlen::runtime_internal::GetWindowEnumWrapper)* getWindowEnumWrapper = nullptr;
};

// The core of a loaded runtime. Its members are called as the functions that they are exported as,
// with the object in front.
class LoadedCore {
    using Core = vorlen::VorlenCore;
    using Text = std::string;
    using Texts = std::vector<std::string>;

    Library library{"../bin/vorlen_runtime.dll"};
    Core& (*instanceFunction)() = nullptr;
    void (*clearFunction)(Core*) = nullptr;
    void (*addFunction)(Core*, vorlen::VORLEN_MONITOR_INFO) = nullptr;
    const std::vector<vorlen::VORLEN_MONITOR_INFO>& (*itemsFunction)(const Core*) = nullptr;
    const Text& (*nameFunction)(const Core*) = nullptr;
    void (*setNameFunction)(Core*, const Text&) = nullptr;
    const Text& (*modelNameFunction)(const Core*) = nullptr;
    void (*setModelNameFunction)(Core*, const Text&) = nullptr;
    const Texts& (*modelsFunction)(const Core*, const Text&) = nullptr;
    void (*makeKnownFunction)(Core*, const Text&) = nullptr;
    const Text& (*cameraFunction)(const Core*, const Text&) = nullptr;

public:
    LoadedCore();

    Core& instance() const { return instanceFunction(); }
    void clear() const { clearFunction(&instance()); }
    void add(const vorlen::VORLEN_MONITOR_INFO& monitor) const {
        addFunction(&instance(), monitor);
    }
    const std::vector<vorlen::VORLEN_MONITOR_INFO>& items() const {
        return itemsFunction(&instance());
    }
    std::int32_t index() const { return instance().GetMonitorIndex(); }
    const Text& name() const { return nameFunction(&instance()); }
    void setName(const Text& name) const { setNameFunction(&instance(), name); }
    const Text& modelName() const { return modelNameFunction(&instance()); }
    void setModelName(const Text& name) const { setModelNameFunction(&instance(), name); }
    const Texts& models(const Text& deviceName) const {
        return modelsFunction(&instance(), deviceName);
    }
    void makeKnown(const Text& model) const { makeKnownFunction(&instance(), model); }
    const Text& camera(const Text& model) const { return cameraFunction(&instance(), model); }
};

} // namespace tests
