#include "tools/vorlen-monitor/run.h"

int main() {
    return static_cast<int>(vorlen::tool::run());
}
