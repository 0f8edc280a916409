#pragma once

#include "monitor/service/ui_records.h"
#include "tests/fixtures/module_test.h"

#include <windows.h>

#include <string>
#include <vector>

namespace tests {

// A test of the shipped library on a desktop without monitors, whose windows are listed through the
// tables that the library registers.
class WindowModuleTest : public ModuleTest {
protected:
    SimulatedWindow& add(const std::wstring& title) { return desktop.windows.add(title); }

    // Adds a window and announces it.
    HWND show(const std::wstring& title) {
        const HWND window = add(title).handle;
        desktop.eventHooks.deliver(EVENT_OBJECT_SHOW, window);
        return window;
    }

    void destroy(HWND window) {
        desktop.windows.find(window)->alive = false;
        desktop.eventHooks.deliver(EVENT_OBJECT_DESTROY, window);
    }

    const std::vector<vorlen::ui::WindowInfo>& windowList() const {
        return module.monitorWrapper().getWindowList();
    }

    std::vector<std::wstring> titles() const { return titlesOf(windowList()); }

    static std::vector<std::wstring> titlesOf(const std::vector<vorlen::ui::WindowInfo>& windows) {
        std::vector<std::wstring> result;
        result.reserve(windows.size());
        for (const vorlen::ui::WindowInfo& window : windows) {
            result.push_back(window.title);
        }
        return result;
    }

    void useWindowList(bool use) const { module.monitorWrapper().useWindowList(use); }

    // Fills a combo box with the live list, and keeps it in step.
    HWND makeComboBox() {
        const HWND box = desktop.comboBoxes.add();
        module.windowEnumWrapper().registerWindowComboBox(box);
        return box;
    }
};

// The same with the service made and two windows listed, a and b, and a journal without the calls
// of the start.
class TwoWindowsTest : public WindowModuleTest {
protected:
    void SetUp() override {
        add(L"a");
        add(L"b");
        module.init();
        desktop.journal.clear();
    }
};

} // namespace tests
