#pragma once

#include "tests/sweeps/sweep_world.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace tests {

// One operation of the library, as a host, the runtime or the system calls it.
struct Operation {
    std::string name;
    std::function<void(SweepWorld&)> run;

    // What has to be the case before; the service is running otherwise.
    std::function<void(SweepWorld&)> arrange = [](SweepWorld&) {
    };

    // The system called: no exception leaves, but a line is logged.
    bool isEvent = false;

    // The monitors were read less than 500 ms ago.
    bool onFreshList = false;

    friend std::ostream& operator<<(std::ostream& out, const Operation& operation) {
        return out << operation.name;
    }
};

// Every operation but the loading of the library.
const std::vector<Operation>& operations();

// Makes the world ready for the operation, with nothing in its journal and log yet.
void prepare(SweepWorld& world, const Operation& operation);

} // namespace tests
