#include "tests/recording_runtime/recording_runtime.h"

#include "tests/support/private_member.h"

#include <optional>
#include <stdexcept>

namespace tests {

using vorlen::VorlenCore;

struct Monitors {
    using type = std::vector<vorlen::VORLEN_MONITOR_INFO> VorlenCore::*;
    friend type memberOf(Monitors);
};

struct ModelsOfMonitor {
    using type = std::vector<std::vector<std::string>> VorlenCore::*;
    friend type memberOf(ModelsOfMonitor);
};

struct MonitorName {
    using type = std::string VorlenCore::*;
    friend type memberOf(MonitorName);
};

struct MonitorModelName {
    using type = std::string VorlenCore::*;
    friend type memberOf(MonitorModelName);
};

struct MonitorIndex {
    using type = std::int32_t VorlenCore::*;
    friend type memberOf(MonitorIndex);
};

struct KnownModels {
    using type = std::vector<std::string> VorlenCore::*;
    friend type memberOf(KnownModels);
};

template struct PrivateMember<Monitors, &VorlenCore::monitors>;
template struct PrivateMember<ModelsOfMonitor, &VorlenCore::modelsOfMonitor>;
template struct PrivateMember<MonitorName, &VorlenCore::monitorName>;
template struct PrivateMember<MonitorModelName, &VorlenCore::monitorModelName>;
template struct PrivateMember<MonitorIndex, &VorlenCore::monitorIndex>;
template struct PrivateMember<KnownModels, &VorlenCore::knownModels>;

namespace {

using vorlen::MonitorWrapper;
using vorlen::WindowEnumWrapper;

class Recorder final : public RecordingRuntime {
public:
    Recorder() = default;
    ~Recorder() {
        if (cleansUpAtItsEnd) {
            cleanup();
        }
    }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    const std::vector<std::string>& registrations() const override { return calls; }

    const MonitorWrapper* monitorWrapper() const override {
        return monitorTable ? &*monitorTable : nullptr;
    }

    const WindowEnumWrapper* windowEnumWrapper() const override {
        return windowTable ? &*windowTable : nullptr;
    }

    void init() const override { run(initFunction); }
    void cleanup() const override { run(cleanupFunction); }
    void cleanUpAtItsEnd() override { cleansUpAtItsEnd = true; }

    const std::vector<vorlen::VORLEN_MONITOR_INFO>& monitorItems() const override {
        return core().GetMonitorItems();
    }

    void setMonitorName(const std::string& name) override { core().SetMonitorName(name); }
    const std::string& monitorName() const override { return core().GetMonitorName(); }
    void setMonitorModelName(const std::string& name) override { core().SetMonitorModelName(name); }
    const std::string& monitorModelName() const override { return core().GetMonitorModelName(); }
    void makeModelKnown(const std::string& modelName) override {
        core().SetVorlenModelName(modelName);
    }

    void setMonitorIndex(std::int32_t index) override { core().*memberOf(MonitorIndex{}) = index; }

    void resetCore() override {
        forget(core().*memberOf(Monitors{}));
        forget(core().*memberOf(ModelsOfMonitor{}));
        forget(core().*memberOf(KnownModels{}));
        forget(core().*memberOf(MonitorName{}));
        forget(core().*memberOf(MonitorModelName{}));
        setMonitorIndex(-1);
    }

    std::vector<std::string> calls;
    std::optional<MonitorWrapper> monitorTable;
    std::optional<WindowEnumWrapper> windowTable;
    void (*initFunction)() = nullptr;
    void (*cleanupFunction)() = nullptr;
    bool cleansUpAtItsEnd = false;

private:
    static VorlenCore& core() { return VorlenCore::Instance(); }

    // Leaves no memory reserved either.
    template <typename Container>
    static void forget(Container& container) {
        Container().swap(container);
    }

    static void run(void (*function)()) {
        if (function == nullptr) {
            throw std::logic_error("no module registered this function");
        }
        function();
    }
};

Recorder& recorder() {
    static Recorder theRecorder;
    return theRecorder;
}

} // namespace
} // namespace tests

using tests::recorder;

tests::RecordingRuntime* RecordingRuntime_Get() {
    return &recorder();
}

void Vorlen_RegisterModuleVersion(const char* name, std::int32_t major, std::int32_t minor,
                                  std::int32_t patch) {
    recorder().calls.push_back("RegisterModuleVersion(" + std::string(name) + ", " +
                               std::to_string(major) + ", " + std::to_string(minor) + ", " +
                               std::to_string(patch) + ")");
}

void Vorlen_RegisterModuleInit(void (*init)()) {
    recorder().calls.emplace_back("RegisterModuleInit");
    recorder().initFunction = init;
}

void Vorlen_RegisterModuleCleanup(void (*cleanup)()) {
    recorder().calls.emplace_back("RegisterModuleCleanup");
    recorder().cleanupFunction = cleanup;
}

namespace vorlen::runtime_internal {

void RegisterMonitorWrapper(const MonitorWrapper& wrapper) {
    recorder().calls.emplace_back("RegisterMonitorWrapper");
    recorder().monitorTable = wrapper;
}

void RegisterWindowEnumWrapper(const WindowEnumWrapper& wrapper) {
    recorder().calls.emplace_back("RegisterWindowEnumWrapper");
    recorder().windowTable = wrapper;
}

} // namespace vorlen::runtime_internal
