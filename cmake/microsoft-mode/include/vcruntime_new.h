// What libc++ and MinGW need of Microsoft's <vcruntime_new.h>.
#pragma once
#pragma GCC system_header
#include <new.h>
