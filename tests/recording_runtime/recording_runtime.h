#pragma once

#include "runtime/core.h"
#include "runtime/registration.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

// What the recording runtime, a vorlen_runtime.dll made for tests, shows of itself. It has the core
// of the shipped runtime; a registration is only noted, so that init and cleanup run when a test
// says so.
class RecordingRuntime {
public:
    // The registration calls so far in order, with their plain arguments, such as
    // RegisterModuleVersion(monitor, 2, 0, 4).
    virtual const std::vector<std::string>& registrations() const = 0;

    // Copies of the tables as they were during the last registration; null before.
    virtual const vorlen::MonitorWrapper* monitorWrapper() const = 0;
    virtual const vorlen::WindowEnumWrapper* windowEnumWrapper() const = 0;

    // Run the registered functions on the calling thread; their exceptions pass through. Without a
    // registration they throw std::logic_error.
    virtual void init() const = 0;
    virtual void cleanup() const = 0;

    // From now on, cleanup runs once more while the static objects of this runtime are destroyed.
    virtual void cleanUpAtItsEnd() = 0;

    // The core of this runtime, for test programs that do not import its functions.
    virtual const std::vector<vorlen::VORLEN_MONITOR_INFO>& monitorItems() const = 0;
    virtual void setMonitorName(const std::string& name) = 0;
    virtual const std::string& monitorName() const = 0;
    virtual void setMonitorModelName(const std::string& name) = 0;
    virtual const std::string& monitorModelName() const = 0;
    virtual void makeModelKnown(const std::string& modelName) = 0;

    // Makes this the core's index of the current monitor, until the core's list is cleared.
    virtual void setMonitorIndex(std::int32_t index) = 0;

    // Makes the core as it was at first, without any known model or memory.
    virtual void resetCore() = 0;

protected:
    ~RecordingRuntime() = default;
};

} // namespace tests

// The process's recording runtime.
extern "C" VORLEN_RUNTIME_API tests::RecordingRuntime* RecordingRuntime_Get();
