// What libc++ and MinGW need of Microsoft's <vcruntime_string.h>.
#pragma once
#pragma GCC system_header
#include <string.h>
