#include "tests/sweeps/operations.h"

#include "monitor/display/monitor_info.h"
#include "monitor/service/ui_records.h"

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
    world.module.monitorWrapper().useWindowList(false);
}

void showLateWindow(SweepWorld& world) {
    world.desktop.windows.find(world.lateWindow)->alive = true;
}

std::vector<Operation> exports() {
    return {
        {"checkMonitorStatus",
         [](auto& w) {
             w.module.exports->checkMonitorStatus();
         }},
        {"getMonitorList",
         [](auto& w) {
             MonitorListItem items[2];
             w.module.exports->getMonitorList(items, 2);
         }},
        {"getWindowList",
         [](auto& w) {
             WindowListItem items[4];
             w.module.exports->getWindowList(items, 4);
         },
         [](auto& w) {
             showLateWindow(w);
             w.desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, w.lateWindow);
         }},
        {"getMonitorModelName",
         [](auto& w) {
             w.module.exports->getMonitorModelName();
         }},
        {"getVorlenMonitorModelName",
         [](auto& w) {
             w.module.exports->getVorlenMonitorModelName();
         }},
        {"setVorlenMonitorModelName",
         [](auto& w) {
             w.module.exports->setVorlenMonitorModelName("A name that needs memory of its own", 35);
         }},
        {"getMonitorRect",
         [](auto& w) {
             w.module.exports->getMonitorRect();
         }},
        {.name = "updateMonitorList",
         .run = [](auto& w) { w.module.exports->updateMonitorList(); },
         .onFreshList = true},
        {"getLastMonitorStatus",
         [](auto& w) {
             w.module.exports->getLastMonitorStatus();
         }},
        {"getCheckedMonitor",
         [](auto& w) {
             MonitorListItem item;
             w.module.exports->getCheckedMonitor(&item);
         }},
        {"getReasonNotCapturable",
         [](auto& w) {
             w.module.exports->getReasonNotCapturable(anyWindow(w));
         }},
        {"restartWindowList",
         [](auto& w) {
             w.windowBoxFollows = false;
             w.module.exports->restartWindowList();
         }},
        {"getMonitorName",
         [](auto& w) {
             exported<std::wstring(HMONITOR)>(w, "_Z14getMonitorNameB5cxx11P10HMONITOR__")(
                 anyMonitor(w));
         }},
        {"getMonitorPath",
         [](auto& w) {
             exported<std::wstring(HMONITOR)>(w, "_Z14getMonitorPathB5cxx11P10HMONITOR__")(
                 anyMonitor(w));
         }},
        {"getMonitorBasicInfo",
         [](auto& w) {
             MonitorInfo info;
             exported<void(HMONITOR, MonitorInfo&)>(
                 w, "_Z19getMonitorBasicInfoP10HMONITOR__R11MonitorInfo")(anyMonitor(w), info);
         }},
    };
}

std::vector<Operation> monitorTable() {
    return {
        {"table_getWindowList", [](auto& w) { w.module.monitorWrapper().getWindowList(); },
         [](auto& w) {
             showLateWindow(w);
             w.desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, w.lateWindow);
         }},
        {"table_getMonitorList",
         [](auto& w) {
             w.module.monitorWrapper().getMonitorList();
         }},
        {"table_getCurrentMonitorName",
         [](auto& w) {
             w.module.monitorWrapper().getCurrentMonitorName();
         }},
        {"table_getVorlenModelName",
         [](auto& w) {
             w.module.monitorWrapper().getVorlenModelName("a device name that needs memory");
         }},
        {"table_getVorlenModelNameWide",
         [](auto& w) {
             w.module.monitorWrapper().getVorlenModelNameWide(L"a device name that needs memory");
         }},
        {"table_setVorlenModelName",
         [](auto& w) {
             w.module.monitorWrapper().setVorlenModelName("Another model that needs memory");
         }},
        {"table_getVorlenCameraName",
         [](auto& w) {
             w.module.monitorWrapper().getVorlenCameraName("A model that needs memory");
         }},
        {"table_useWindowList_on", [](auto& w) { w.module.monitorWrapper().useWindowList(true); },
         turnWindowsOff},
        {"table_useWindowList_off",
         [](auto& w) {
             w.module.monitorWrapper().useWindowList(false);
         }},
    };
}

std::vector<Operation> listTable() {
    return {
        {"lists_updateMonitorList",
         [](auto& w) {
             w.module.windowEnumWrapper().updateMonitorList();
         }},
        {"lists_registerWindowComboBox",
         [](auto& w) { w.module.windowEnumWrapper().registerWindowComboBox(w.windowBox); },
         [](auto& w) {
             turnWindowsOff(w);
             w.module.monitorWrapper().useWindowList(true);
         }},
        {"lists_registerMonitorComboBox",
         [](auto& w) {
             w.module.windowEnumWrapper().registerMonitorComboBox(w.monitorBox);
         }},
        {"lists_getWindowHandle",
         [](auto& w) {
             w.module.windowEnumWrapper().getWindowHandle(1);
         }},
        {"lists_getMonitorHandle",
         [](auto& w) {
             w.module.windowEnumWrapper().getMonitorHandle(1);
         }},
    };
}

std::vector<Operation> lifecycle() {
    return {{"init", [](auto& w) { w.module.init(); },
             [](auto& w) {
                 w.windowBoxFollows = false;
                 w.module.cleanup();
             }},
            {"cleanup", [](auto& w) {
                 w.module.cleanup();
             }}};
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
