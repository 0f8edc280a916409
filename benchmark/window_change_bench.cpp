#include "benchmark/cases.h"
#include "benchmark/measurement.h"
#include "benchmark/plain_windows.h"
#include "benchmark/simulated_module.h"

namespace bench {

namespace {

// The library with a list of so many windows and so many combo boxes that mirror it. The window
// that has been listed for longest goes first, and comes back as the youngest.
class Desk : SimulatedModule {
public:
    Desk(std::size_t listedWindows, std::size_t comboBoxCount)
        : windowCount(listedWindows), windows(module.image(), listedWindows) {
        module.init();
        for (std::size_t i = 0; i < comboBoxCount; ++i) {
            const auto comboBox = reinterpret_cast<HWND>(0x900000 + i);
            module.windowEnumWrapper().registerWindowComboBox(comboBox);
        }
    }

    void vanish() { deliver(EVENT_OBJECT_DESTROY, vanished++); }
    void appear() { deliver(EVENT_OBJECT_SHOW, appeared++); }

    void makeMissing(std::size_t count) {
        while (vanished - appeared < count) {
            vanish();
        }
        while (vanished - appeared > count) {
            appear();
        }
    }

private:
    void deliver(DWORD event, std::size_t n) {
        desktop.eventHooks.deliver(event, PlainWindows::handle(n % windowCount));
    }

    std::size_t windowCount;
    std::size_t vanished = 0;
    std::size_t appeared = 0;
    PlainWindows windows;
};

struct Change {
    double added;
    double removed;
};

// For each of the changes by which half of the windows go and come back: what the library tidies up
// now and then is part of it.
Change costOfChanges(std::size_t windowCount, std::size_t comboBoxCount, std::size_t samples) {
    Desk desk(windowCount, comboBoxCount);
    const std::size_t half = windowCount / 2;
    const auto times = medians({{[&] { desk.appear(); }, [&] { desk.makeMissing(half); }, half},
                                {[&] { desk.vanish(); }, [&] { desk.makeMissing(0); }, half}},
                               samples);
    return {times[0], times[1]};
}

Row growth(const std::string& what, double few, double many) {
    return within("next to none: ", 3, "", what, "in 100", many / few,
                  {{"in 100, ns", few}, {"in 10000, ns", many}});
}

} // namespace

std::vector<Row> windowChanges(const Effort& effort) {
    std::vector<Row> rows;
    for (const std::size_t comboBoxes : {0U, 1U, 8U}) {
        const Change few = costOfChanges(100, comboBoxes, effort.slowSamples);
        const Change many = costOfChanges(10'000, comboBoxes, effort.slowSamples);
        const std::string boxes = ", " + std::to_string(comboBoxes) + " combo boxes";
        rows.push_back(growth("a window more in 10000" + boxes, few.added, many.added));
        rows.push_back(growth("a window less in 10000" + boxes, few.removed, many.removed));
    }
    return rows;
}

} // namespace bench
