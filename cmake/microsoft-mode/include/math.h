// Microsoft's <math.h> has these as templates.
#pragma once
#pragma GCC system_header
#include_next <math.h>
#ifdef __cplusplus
#undef fpclassify
#undef isfinite
#undef isgreater
#undef isgreaterequal
#undef isinf
#undef isless
#undef islessequal
#undef islessgreater
#undef isnan
#undef isnormal
#undef isunordered
template <class Number>
bool isfinite(Number value) noexcept {
    return __builtin_isfinite(value);
}
template <class Number>
bool isinf(Number value) noexcept {
    return __builtin_isinf(value);
}
template <class Number>
bool isnan(Number value) noexcept {
    return __builtin_isnan(value);
}
template <class Number>
bool isnormal(Number value) noexcept {
    return __builtin_isnormal(value);
}
template <class Number>
int fpclassify(Number) noexcept;
template <class Left, class Right>
bool isgreater(Left, Right) noexcept;
template <class Left, class Right>
bool isgreaterequal(Left, Right) noexcept;
template <class Left, class Right>
bool isless(Left, Right) noexcept;
template <class Left, class Right>
bool islessequal(Left, Right) noexcept;
template <class Left, class Right>
bool islessgreater(Left, Right) noexcept;
template <class Left, class Right>
bool isunordered(Left, Right) noexcept;
#endif
