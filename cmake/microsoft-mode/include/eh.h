// What libc++ and MinGW need of Microsoft's <eh.h>.
#pragma once
#pragma GCC system_header
typedef void(__cdecl* terminate_handler)();
typedef void(__cdecl* unexpected_handler)();
terminate_handler set_terminate(terminate_handler) noexcept;
terminate_handler _get_terminate();
[[noreturn]] void terminate() noexcept;
unexpected_handler set_unexpected(unexpected_handler) noexcept;
unexpected_handler _get_unexpected();
[[noreturn]] void unexpected();
int __uncaught_exceptions();
