# vorlen_options: an interface target that every target of this project links. Warnings are errors.
# Every image has dynamic base, high-entropy addresses and NX.
add_library(vorlen_options INTERFACE)
target_compile_features(vorlen_options INTERFACE cxx_std_20)
target_compile_definitions(vorlen_options INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN WINVER=0x0A00 _WIN32_WINNT=0x0A00)

if(MSVC)
    # /EHs: functions with C linkage may throw.
    target_compile_options(vorlen_options INTERFACE /W4 /WX /utf-8 /permissive- /EHs /Zi)
    target_link_options(vorlen_options INTERFACE /DEBUG /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT)
    return()
endif()

target_compile_options(vorlen_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wconversion -Wsign-conversion -Wshadow -Wcast-align
    -Wcast-qual -Wdouble-promotion -Wformat=2 -Wimplicit-fallthrough -Wundef -Wvla
    $<$<COMPILE_LANGUAGE:CXX>:-Wextra-semi -Wnon-virtual-dtor -Wold-style-cast
        -Woverloaded-virtual -Wzero-as-null-pointer-constant>
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wduplicated-branches -Wduplicated-cond -Wlogical-op
        -Wredundant-decls -Wuseless-cast>
    $<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes -Wmissing-prototypes>
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)

if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(vorlen_options INTERFACE -g -gcodeview)
    target_link_options(vorlen_options INTERFACE
        -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat)
else()
    target_link_options(vorlen_options INTERFACE
        -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat -Wl,--gc-sections -Wl,-s)
endif()

# vorlen_image(<target>): the options of a library or program. Clang also writes a PDB into the
# same folder; the image contains the PDB's name without the build folder.
function(vorlen_image target)
    target_link_libraries(${target} PRIVATE vorlen_options)
    get_target_property(type ${target} TYPE)
    if(MINGW AND type STREQUAL "SHARED_LIBRARY")
        target_link_libraries(${target} PRIVATE gnu_runtime)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        set(pdb $<TARGET_FILE_DIR:${target}>/$<TARGET_FILE_BASE_NAME:${target}>.pdb)
        target_link_options(${target} PRIVATE
            -Wl,--pdb=${pdb} -Wl,-Xlink=-pdbaltpath:%_PDB%)
    endif()
endfunction()
