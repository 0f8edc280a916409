// What libc++ and MinGW need of Microsoft's <sal.h>.
#pragma once
#pragma GCC system_header
