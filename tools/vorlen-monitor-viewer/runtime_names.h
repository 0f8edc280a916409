#pragma once

// C++ functions of the runtime as compilers name them in export tables: the first name is that of
// GCC and Clang, the second that of Microsoft's compiler. The viewer and both libraries are built
// with one toolchain.
namespace vorlen::viewer::runtime_names {

#ifdef _MSC_VER
#define VORLEN_NAME(gnu, microsoft) microsoft
#else
#define VORLEN_NAME(gnu, microsoft) gnu
#endif

inline constexpr const char* getMonitorWrapper =
    VORLEN_NAME("_ZN6vorlen16runtime_internal17GetMonitorWrapperEv",
                "?GetMonitorWrapper@runtime_internal@vorlen@@YAPEBUMonitorWrapper@2@XZ");
inline constexpr const char* getWindowEnumWrapper =
    VORLEN_NAME("_ZN6vorlen16runtime_internal20GetWindowEnumWrapperEv",
                "?GetWindowEnumWrapper@runtime_internal@vorlen@@YAPEBUWindowEnumWrapper@2@XZ");
inline constexpr const char* registerDebugCallback =
    VORLEN_NAME("_ZN6vorlen3log8vllogger21RegisterDebugCallbackEPFviPKcE",
                "?RegisterDebugCallback@vllogger@log@vorlen@@SAXP6AXHPEBD@Z@Z");

#undef VORLEN_NAME

} // namespace vorlen::viewer::runtime_names
