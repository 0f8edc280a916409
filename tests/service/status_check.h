#pragma once

#include "tests/fixtures/status_check_test.h"
