# The options of Microsoft's compiler.
#
# Module, runtime and C++ hosts pass C++ objects and exceptions to each other, so they need one C++
# runtime and one heap: those of the redistributable, which /MD selects.
string(CONCAT rejection
    "This project is built with /MD only. The libraries and their C++ hosts pass C++ objects and "
    "exceptions to each other: they must share one C++ runtime and one heap, those of the Microsoft "
    "Visual C++ Redistributable (vc_redist.x64.exe).")

if(DEFINED CMAKE_MSVC_RUNTIME_LIBRARY
        AND NOT CMAKE_MSVC_RUNTIME_LIBRARY STREQUAL "MultiThreadedDLL")
    message(FATAL_ERROR "${rejection} CMAKE_MSVC_RUNTIME_LIBRARY is ${CMAKE_MSVC_RUNTIME_LIBRARY}: "
        "leave it out.")
endif()
string(TOUPPER "${CMAKE_BUILD_TYPE}" configuration)
foreach(variable CMAKE_C_FLAGS CMAKE_C_FLAGS_${configuration}
        CMAKE_CXX_FLAGS CMAKE_CXX_FLAGS_${configuration})
    if("${${variable}}" MATCHES "(^| )[-/](MT|MTd|MDd)( |$)")
        message(FATAL_ERROR "${rejection} ${variable} contains ${CMAKE_MATCH_2}: leave it out.")
    endif()
endforeach()
set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreadedDLL)

# Functions with C linkage may throw. CMake's default, /EHsc, says that they do not.
string(REPLACE "/EHsc" "" CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
target_compile_options(vorlen_options INTERFACE /W4 /WX /utf-8 /permissive- /EHs /EHc-
    /bigobj # for merged sources
    # Microsoft's compiler warns of conversions that lose something at /W4, Clang does not.
    $<$<CXX_COMPILER_ID:Clang>:-Wconversion>)
if(NOT CMAKE_CROSSCOMPILING) # a cross build links nothing
    target_compile_options(vorlen_options INTERFACE /Z7)
endif()

# Without /OPT, /DEBUG keeps functions that nothing calls. An image names its PDB without the folder.
target_link_options(vorlen_options INTERFACE
    /DEBUG /OPT:REF,ICF /PDBALTPATH:%_PDB% /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT)
