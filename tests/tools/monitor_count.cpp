// A host that stays: answers every line of standard input with a line that holds the number of
// monitors, until standard input ends.
#include "vorlen/monitor.h"
#include "vorlen/runtime.h"

#include <iostream>
#include <string>

int main() {
    if (!Vorlen_Initialize()) {
        return 1;
    }
    for (std::string question; std::getline(std::cin, question);) {
        std::cout << getMonitorList(nullptr, 0) << std::endl;
    }
    Vorlen_Shutdown();
    return std::cout.good() ? 0 : 1;
}
