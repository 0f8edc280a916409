# find_package(vorlen-monitor) gives the targets
#
#     vorlen::monitor   libvorlen_monitor.dll and its headers
#     vorlen::runtime   vorlen_runtime.dll
#
# A host that links them needs both libraries beside its program: $<TARGET_RUNTIME_DLLS:program>
# names them. A host that loads them when it runs needs the headers only, which each target brings.
set(_vorlen_architecture "${CMAKE_C_COMPILER_ARCHITECTURE_ID}${CMAKE_CXX_COMPILER_ARCHITECTURE_ID}")
if(NOT WIN32 OR NOT CMAKE_SIZEOF_VOID_P EQUAL 8 OR _vorlen_architecture MATCHES "ARM")
    set(vorlen-monitor_FOUND FALSE)
    set(vorlen-monitor_NOT_FOUND_MESSAGE "vorlen-monitor is for Windows programs for x86-64")
    return()
endif()

get_filename_component(_vorlen_prefix "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
if(MINGW)
    set(_vorlen_import_suffix .dll.a)
else()
    set(_vorlen_import_suffix .lib)
endif()

function(_vorlen_import target name)
    if(NOT TARGET ${target})
        add_library(${target} SHARED IMPORTED)
        set_target_properties(${target} PROPERTIES
            IMPORTED_LOCATION "${_vorlen_prefix}/bin/${name}.dll"
            IMPORTED_IMPLIB "${_vorlen_prefix}/lib/${name}${_vorlen_import_suffix}"
            INTERFACE_INCLUDE_DIRECTORIES "${_vorlen_prefix}/include")
    endif()
endfunction()
_vorlen_import(vorlen::monitor libvorlen_monitor)
_vorlen_import(vorlen::runtime vorlen_runtime)
unset(_vorlen_prefix)
unset(_vorlen_import_suffix)
unset(_vorlen_architecture)
