// MinGW's attributes are those of GNU, which Microsoft's mode does not have.
#pragma once
#pragma GCC system_header
#include_next <_mingw.h>
#undef __attribute__
#undef __MINGW_ATTRIB_CONST
#undef __MINGW_ATTRIB_DEPRECATED
#undef __MINGW_ATTRIB_DEPRECATED_MSVC2005
#undef __MINGW_ATTRIB_DEPRECATED_SEC_WARN
#undef __MINGW_ATTRIB_DEPRECATED_STR
#undef __MINGW_ATTRIB_MALLOC
#undef __MINGW_ATTRIB_NONNULL
#undef __MINGW_ATTRIB_NORETURN
#undef __MINGW_ATTRIB_PURE
#undef __MINGW_NOTHROW
#undef __nothrow
#define __MINGW_ATTRIB_CONST
#define __MINGW_ATTRIB_DEPRECATED
#define __MINGW_ATTRIB_DEPRECATED_MSVC2005
#define __MINGW_ATTRIB_DEPRECATED_SEC_WARN
#define __MINGW_ATTRIB_DEPRECATED_STR(text)
#define __MINGW_ATTRIB_MALLOC
#define __MINGW_ATTRIB_NONNULL(argument)
#define __MINGW_ATTRIB_NORETURN __attribute__((__noreturn__))
#define __MINGW_ATTRIB_PURE
#define __MINGW_NOTHROW
#define __nothrow
#define DECLSPEC_NOVTABLE __declspec(novtable)
#define DECLSPEC_UUID(text) __declspec(uuid(text))
