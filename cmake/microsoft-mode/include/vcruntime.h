// What libc++ and MinGW need of Microsoft's <vcruntime.h>.
#pragma once
#pragma GCC system_header
#include <corecrt.h>
