#include "simulation/combo_boxes.h"

#include "simulation/expect.h"

#include <algorithm>
#include <stdexcept>

namespace simulation {

ComboBoxes::ComboBoxes(Redirects& redirects, Journal& calls) : journal(calls) {
    redirects.replace<decltype(SendMessageW)>("SendMessageW", sendMessage);
}

HWND ComboBoxes::add(const std::vector<std::wstring>& entries) {
    auto* const handle = reinterpret_cast<HWND>(0x20001 + all.size());
    all.push_back({handle, entries, false});
    return handle;
}

SimulatedComboBox& ComboBoxes::box(HWND handle) {
    const auto found =
        std::ranges::find_if(all, [=](const auto& box) { return box.handle == handle; });
    if (found == all.end()) {
        throw std::invalid_argument("no combo box has this handle");
    }
    return *found;
}

LRESULT ComboBoxes::process(SimulatedComboBox& target, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case CB_RESETCONTENT:
        SIMULATION_EXPECT(wParam == 0u);
        SIMULATION_EXPECT(lParam == 0);
        target.entries.clear();
        return CB_OKAY;
    case CB_ADDSTRING:
        SIMULATION_EXPECT(wParam == 0u);
        target.entries.emplace_back(reinterpret_cast<const wchar_t*>(lParam));
        return static_cast<LRESULT>(target.entries.size()) - 1;
    case CB_DELETESTRING:
        SIMULATION_EXPECT(lParam == 0);
        if (wParam >= target.entries.size()) {
            return CB_ERR;
        }
        target.entries.erase(target.entries.begin() + static_cast<std::ptrdiff_t>(wParam));
        return static_cast<LRESULT>(target.entries.size());
    default:
        report("a combo box was sent the message " + std::to_string(message));
        return 0;
    }
}

LRESULT WINAPI ComboBoxes::sendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (get().areOfTheSystem) {
        return SendMessageW(window, message, wParam, lParam);
    }
    const auto* const text = reinterpret_cast<const wchar_t*>(lParam);
    get().messages.push_back({window, message, wParam, message == CB_ADDSTRING ? text : L""});
    if (const auto reply = get().journal.enter("SendMessageW")) {
        return static_cast<LRESULT>(*reply);
    }
    SimulatedComboBox& target = get().box(window);
    return target.destroyed ? 0 : get().process(target, message, wParam, lParam);
}

} // namespace simulation
