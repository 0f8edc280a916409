// What libc++ and MinGW need of Microsoft's <new.h>.
#pragma once
#pragma GCC system_header
#include <stddef.h>
namespace std {
struct nothrow_t {};
extern nothrow_t const nothrow;
enum class align_val_t : size_t {};
typedef void(__cdecl* new_handler)();
new_handler set_new_handler(new_handler) noexcept;
new_handler get_new_handler() noexcept;
} // namespace std
void* operator new(size_t, std::nothrow_t const&) noexcept;
void* operator new[](size_t, std::nothrow_t const&) noexcept;
void* operator new(size_t, std::align_val_t);
void* operator new[](size_t, std::align_val_t);
void* operator new(size_t, std::align_val_t, std::nothrow_t const&) noexcept;
void* operator new[](size_t, std::align_val_t, std::nothrow_t const&) noexcept;
void operator delete(void*, std::align_val_t) noexcept;
void operator delete[](void*, std::align_val_t) noexcept;
inline void* operator new(size_t, void* where) noexcept {
    return where;
}
inline void* operator new[](size_t, void* where) noexcept {
    return where;
}
