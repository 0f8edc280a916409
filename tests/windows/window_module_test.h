#pragma once

#include "tests/fixtures/window_module_test.h"
