#include "tests/recording_runtime/core_calls.h"

#include "tests/support/mangled_names.h"

#include <utility>

namespace tests {

namespace {

const std::string prefix = "VorlenCore::";

} // namespace

// A member function takes its object as the first argument.
template <typename Function>
void CoreCalls::forward(Function*& original, const char* mangledName, Function* replacement) {
    if (importedFunction(image, mangledName) != nullptr || !absent.contains(mangledName)) {
        redirects.emplace_back(image, mangledName, addressOf(replacement));
        original = reinterpret_cast<Function*>(redirects.back().original());
    }
}

CoreCalls::CoreCalls(HMODULE watched, Journal& calls, std::set<std::string> absentFunctions)
    : image(watched), journal(calls), absent(std::move(absentFunctions)) {
    forward(core.instance, mangled::instance, instance);
    forward(core.clearMonitorList, mangled::clearMonitorList, clearMonitorList);
    forward(core.addMonitorItem, mangled::addMonitorItem, addMonitorItem);
    forward(core.getMonitorName, mangled::getMonitorName, getMonitorName);
    forward(core.setMonitorName, mangled::setMonitorName, setMonitorName);
    forward(core.getMonitorModelName, mangled::getMonitorModelName, getMonitorModelName);
    forward(core.setMonitorModelName, mangled::setMonitorModelName, setMonitorModelName);
    forward(core.getVorlenModelName, mangled::getVorlenModelName, getVorlenModelName);
    forward(core.setVorlenModelName, mangled::setVorlenModelName, setVorlenModelName);
    forward(core.getDefaultCameraName, mangled::getDefaultCameraName, getDefaultCameraName);
}

std::vector<std::string> CoreCalls::names() const {
    std::vector<std::string> result;
    for (const std::string& call : journal.calls()) {
        if (call.starts_with(prefix)) {
            result.push_back(call.substr(prefix.size()));
        }
    }
    return result;
}

void CoreCalls::note(const char* name) {
    get().journal.enter(prefix + name);
}

void CoreCalls::note(const char* name, const Text& text) {
    get().texts.push_back(text);
    note(name);
}

vorlen::VorlenCore& CoreCalls::instance() {
    note("Instance");
    return get().core.instance();
}

void CoreCalls::clearMonitorList(VorlenCore* core) {
    note("ClearMonitorList");
    get().core.clearMonitorList(core);
}

void CoreCalls::addMonitorItem(VorlenCore* core, vorlen::VORLEN_MONITOR_INFO monitor) {
    note("AddMonitorItem");
    get().core.addMonitorItem(core, std::move(monitor));
}

const std::string& CoreCalls::getMonitorName(const VorlenCore* core) {
    note("GetMonitorName");
    return get().core.getMonitorName(core);
}

void CoreCalls::setMonitorName(VorlenCore* core, const Text& name) {
    note("SetMonitorName", name);
    get().core.setMonitorName(core, name);
}

const std::string& CoreCalls::getMonitorModelName(const VorlenCore* core) {
    note("GetMonitorModelName");
    return get().core.getMonitorModelName(core);
}

void CoreCalls::setMonitorModelName(VorlenCore* core, const Text& name) {
    note("SetMonitorModelName", name);
    get().core.setMonitorModelName(core, name);
}

const std::vector<std::string>& CoreCalls::getVorlenModelName(const VorlenCore* core,
                                                              const Text& deviceName) {
    note("GetVorlenModelName", deviceName);
    return get().core.getVorlenModelName(core, deviceName);
}

void CoreCalls::setVorlenModelName(VorlenCore* core, const Text& modelName) {
    note("SetVorlenModelName", modelName);
    get().core.setVorlenModelName(core, modelName);
}

const std::string& CoreCalls::getDefaultCameraName(const VorlenCore*, const Text& modelName) {
    note("GetDefaultCameraNameByModelName", modelName);
    return get().cameraName;
}

} // namespace tests
