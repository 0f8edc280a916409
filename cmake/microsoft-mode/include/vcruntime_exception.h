// What libc++ and MinGW need of Microsoft's <vcruntime_exception.h>.
#pragma once
#pragma GCC system_header
namespace std {
class exception {
public:
    exception() noexcept;
    explicit exception(char const*) noexcept;
    exception(char const*, int) noexcept;
    exception(exception const&) noexcept;
    exception& operator=(exception const&) noexcept;
    virtual ~exception() noexcept;
    virtual char const* what() const;
};
class bad_exception : public exception {};
class bad_alloc : public exception {};
class bad_array_new_length : public bad_alloc {};
} // namespace std
