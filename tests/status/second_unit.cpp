#include "tests/status/second_unit.h"

namespace tests {

StatusTables tablesOfSecondUnit() {
    return {vorlen::StatusMessages, vorlen::StatusShortMessages};
}

} // namespace tests
