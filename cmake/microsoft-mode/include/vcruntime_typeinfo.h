// What libc++ and MinGW need of Microsoft's <vcruntime_typeinfo.h>.
#pragma once
#pragma GCC system_header
class type_info {
public:
    virtual ~type_info();
    bool operator==(type_info const&) const noexcept;
    bool operator!=(type_info const&) const noexcept;
    bool before(type_info const&) const noexcept;
    size_t hash_code() const noexcept;
    char const* name() const noexcept;
};
namespace std {
using ::type_info;
class bad_cast : public exception {};
class bad_typeid : public exception {};
} // namespace std
