#pragma once

// The members of VorlenCore and of the logger as GCC and Clang name them in import and export
// tables.
namespace tests::mangled {

#define VORLEN_CORE(name) "_ZN6vorlen10VorlenCore" name
#define VORLEN_CONST_CORE(name) "_ZNK6vorlen10VorlenCore" name
#define VORLEN_STRING "ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"

inline constexpr const char* instance = VORLEN_CORE("8InstanceEv");
inline constexpr const char* clearMonitorList = VORLEN_CORE("16ClearMonitorListEv");
inline constexpr const char* addMonitorItem =
    VORLEN_CORE("14AddMonitorItemENS_19VORLEN_MONITOR_INFOE");
inline constexpr const char* getMonitorItems = VORLEN_CONST_CORE("15GetMonitorItemsEv");
inline constexpr const char* getMonitorName = VORLEN_CONST_CORE("14GetMonitorNameB5cxx11Ev");
inline constexpr const char* setMonitorName = VORLEN_CORE("14SetMonitorName" VORLEN_STRING);
inline constexpr const char* getMonitorModelName =
    VORLEN_CONST_CORE("19GetMonitorModelNameB5cxx11Ev");
inline constexpr const char* setMonitorModelName =
    VORLEN_CORE("19SetMonitorModelName" VORLEN_STRING);
inline constexpr const char* getVorlenModelName =
    VORLEN_CONST_CORE("18GetVorlenModelName" VORLEN_STRING);
inline constexpr const char* setVorlenModelName = VORLEN_CORE("18SetVorlenModelName" VORLEN_STRING);
inline constexpr const char* getDefaultCameraName =
    VORLEN_CONST_CORE("31GetDefaultCameraNameByModelName" VORLEN_STRING);

inline constexpr const char* log =
    "_ZN6vorlen3log8vllogger3logENS0_10level_enumERKNSt7__cxx1112basic_stringIcSt11char_traitsIcE"
    "SaIcEEEb";

#undef VORLEN_CORE
#undef VORLEN_CONST_CORE
#undef VORLEN_STRING

} // namespace tests::mangled
