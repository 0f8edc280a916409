#include "tests/sweeps/operations.h"

#include "monitor/display/monitor_info.h"
#include "monitor/service/ui_records.h"
#include "tests/fixtures/mangled_names.h"

#include <stdexcept>

namespace tests {

namespace {

// A function that the module exports under a C++ name.
template <typename Function>
Function* exported(SweepWorld& world, const char* name) {
    const FARPROC address = GetProcAddress(world.module.image(), name);
    if (address == nullptr) {
        throw std::runtime_error(std::string("the library does not export ") + name);
    }
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

HMONITOR anyMonitor(SweepWorld& world) {
    return world.desktop.monitors.all[1].handle;
}

HWND anyWindow(SweepWorld& world) {
    return world.desktop.windows.order[1];
}

void turnWindowsOff(SweepWorld& world) {
    world.windowBoxFollows = false;
    world.table().useWindowList(false);
}

void showLateWindow(SweepWorld& world) {
    world.desktop.windows.find(world.lateWindow)->alive = true;
}

void announceLateWindow(SweepWorld& world) {
    showLateWindow(world);
    world.desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, world.lateWindow);
}

void turnWindowsOffAndOn(SweepWorld& world) {
    turnWindowsOff(world);
    world.table().useWindowList(true);
}

void restartWindows(SweepWorld& world) {
    world.windowBoxFollows = false;
    world.exports().restartWindowList();
}

void cleanUp(SweepWorld& world) {
    world.windowBoxFollows = false;
    world.module.cleanup();
}

void readMonitors(SweepWorld& world) {
    MonitorListItem items[2];
    world.exports().getMonitorList(items, 2);
}

void readWindows(SweepWorld& world) {
    WindowListItem items[4];
    world.exports().getWindowList(items, 4);
}

void readCheckedMonitor(SweepWorld& world) {
    MonitorListItem item;
    world.exports().getCheckedMonitor(&item);
}

void setModelName(SweepWorld& world) {
    world.exports().setVorlenMonitorModelName("A name that needs memory of its own", 35);
}

void readMonitorName(SweepWorld& world) {
    exported<std::wstring(HMONITOR)>(world, mangled::getNameOfMonitor)(anyMonitor(world));
}

void readMonitorPath(SweepWorld& world) {
    exported<std::wstring(HMONITOR)>(world, mangled::getPathOfMonitor)(anyMonitor(world));
}

void readMonitorBasicInfo(SweepWorld& world) {
    MonitorInfo info;
    exported<void(HMONITOR, MonitorInfo&)>(world, mangled::getMonitorBasicInfo)(anyMonitor(world),
                                                                                info);
}

// The service is running, and its monitors are stale.
Operation call(const std::string& name, const std::function<void(SweepWorld&)>& run) {
    return {.name = name, .run = run};
}

Operation onFreshList(Operation operation) {
    operation.name += "_on_fresh_list";
    operation.onFreshList = true;
    return operation;
}

Operation after(const std::function<void(SweepWorld&)>& arrange, Operation operation) {
    operation.arrange = arrange;
    return operation;
}

std::vector<Operation> exports() {
    const auto check =
        call("checkMonitorStatus", [](auto& w) { w.exports().checkMonitorStatus(); });
    const auto update = call("updateMonitorList", [](auto& w) { w.exports().updateMonitorList(); });
    return {
        check,
        onFreshList(check),
        onFreshList(update),
        call("getMonitorList", readMonitors),
        after(announceLateWindow, call("getWindowList", readWindows)),
        call("getMonitorModelName", [](auto& w) { w.exports().getMonitorModelName(); }),
        call("getVorlenMonitorModelName", [](auto& w) { w.exports().getVorlenMonitorModelName(); }),
        call("setVorlenMonitorModelName", setModelName),
        call("getMonitorRect", [](auto& w) { w.exports().getMonitorRect(); }),
        call("getLastMonitorStatus", [](auto& w) { w.exports().getLastMonitorStatus(); }),
        call("getCheckedMonitor", readCheckedMonitor),
        call("getReasonNotCapturable",
             [](auto& w) { w.exports().getReasonNotCapturable(anyWindow(w)); }),
        call("restartWindowList", restartWindows),
        call("getMonitorName", readMonitorName),
        call("getMonitorPath", readMonitorPath),
        call("getMonitorBasicInfo", readMonitorBasicInfo),
    };
}

std::vector<Operation> monitorTable() {
    return {
        after(announceLateWindow,
              call("table_getWindowList", [](auto& w) { w.table().getWindowList(); })),
        call("table_getMonitorList", [](auto& w) { w.table().getMonitorList(); }),
        call("table_getCurrentMonitorName", [](auto& w) { w.table().getCurrentMonitorName(); }),
        call("table_getVorlenModelName",
             [](auto& w) { w.table().getVorlenModelName("a device name that needs memory"); }),
        call("table_getVorlenModelNameWide",
             [](auto& w) { w.table().getVorlenModelNameWide(L"a device name that needs memory"); }),
        call("table_setVorlenModelName",
             [](auto& w) { w.table().setVorlenModelName("Another model that needs memory"); }),
        call("table_getVorlenCameraName",
             [](auto& w) { w.table().getVorlenCameraName("A model that needs memory"); }),
        after(turnWindowsOff,
              call("table_useWindowList_on", [](auto& w) { w.table().useWindowList(true); })),
        call("table_useWindowList_off", [](auto& w) { w.table().useWindowList(false); }),
    };
}

std::vector<Operation> listTable() {
    return {
        call("lists_updateMonitorList", [](auto& w) { w.lists().updateMonitorList(); }),
        after(turnWindowsOffAndOn,
              call("lists_registerWindowComboBox",
                   [](auto& w) { w.lists().registerWindowComboBox(w.windowBox); })),
        call("lists_registerMonitorComboBox",
             [](auto& w) { w.lists().registerMonitorComboBox(w.monitorBox); }),
        call("lists_getWindowHandle", [](auto& w) { w.lists().getWindowHandle(1); }),
        call("lists_getMonitorHandle", [](auto& w) { w.lists().getMonitorHandle(1); }),
    };
}

std::vector<Operation> lifecycle() {
    return {after(cleanUp, call("init", [](auto& w) { w.module.init(); })),
            call("cleanup", cleanUp)};
}

std::vector<Operation> events() {
    const auto deliverLate = [](DWORD event) {
        return [=](SweepWorld& w) {
            w.desktop.eventHooks.deliver(event, w.lateWindow);
        };
    };
    return {{"event_show", deliverLate(EVENT_OBJECT_SHOW), showLateWindow, true},
            {"event_uncloaked", deliverLate(EVENT_OBJECT_UNCLOAKED), showLateWindow, true},
            {"event_destroy",
             [](auto& w) { w.desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, anyWindow(w)); },
             [](auto& w) { w.desktop.windows.find(anyWindow(w))->alive = false; }, true}};
}

} // namespace

const std::vector<Operation>& operations() {
    static const std::vector<Operation> all = [] {
        std::vector<Operation> result;
        for (const auto& part : {exports(), monitorTable(), listTable(), lifecycle(), events()}) {
            result.insert(result.end(), part.begin(), part.end());
        }
        return result;
    }();
    return all;
}

void prepare(SweepWorld& world, const Operation& operation) {
    world.start();
    operation.arrange(world);
    world.makeIdentificationsUnknown();
    if (!operation.onFreshList) {
        world.letListGrowStale();
    }
    world.log.lines.clear();
    world.desktop.journal.clear();
}

} // namespace tests
