#pragma once

#include "simulation/current.h"
#include "simulation/journal.h"
#include "simulation/redirects.h"

#include <windows.h>

#include <string>
#include <vector>

namespace simulation {

struct SimulatedComboBox {
    HWND handle = nullptr;
    std::vector<std::wstring> entries;
    bool destroyed = false;
};

struct SentMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    std::wstring text; // of CB_ADDSTRING
};

// The combo boxes of a host behind SendMessageW. A destroyed combo box replies 0 to every message.
// A test plans other replies with the journal: fail("SendMessageW", n, CB_ERR).
class ComboBoxes : private Current<ComboBoxes> {
public:
    ComboBoxes(Redirects& redirects, Journal& calls);

    // Creates a combo box with these entries and returns its handle.
    HWND add(const std::vector<std::wstring>& entries = {});

    SimulatedComboBox& box(HWND handle);
    const std::vector<std::wstring>& entries(HWND handle) { return box(handle).entries; }

    // Whether all messages go to the system instead: for a program that replays a desktop and shows
    // combo boxes of its own.
    bool areOfTheSystem = false;

    // Every message so far, including messages with a planned reply or to a destroyed combo box.
    std::vector<SentMessage> messages;

private:
    friend class Current<ComboBoxes>;
    LRESULT process(SimulatedComboBox& target, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT WINAPI sendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    Journal& journal;
    std::vector<SimulatedComboBox> all;
};

} // namespace simulation
