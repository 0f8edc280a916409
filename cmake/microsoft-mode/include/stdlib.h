// What libc++ needs of Microsoft's <stdlib.h> beside MinGW's.
#pragma once
#pragma GCC system_header
#include_next <stdlib.h>
#ifdef __cplusplus
extern "C" void* aligned_alloc(size_t, size_t);
extern "C" float _strtof_l(char const*, char**, _locale_t);
extern "C" long double _strtold_l(char const*, char**, _locale_t);
#endif
