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
    $<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes -Wmissing-prototypes>)

if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    find_program(VORLEN_OBJCOPY llvm-objcopy-14 REQUIRED NO_CMAKE_FIND_ROOT_PATH)
    # A PDB also holds the command line of each compilation: nothing in it may name the folder of the
    # tree. The compiler cache makes the paths of files relative to that of the build. This path
    # ends with a slash.
    file(RELATIVE_PATH to_sources ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})
    target_compile_options(vorlen_options INTERFACE
        -g -gcodeview -ffile-compilation-dir=. -ffile-prefix-map=${to_sources}=)
    target_link_options(vorlen_options INTERFACE
        -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat)
else()
    target_compile_options(vorlen_options INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
    target_link_options(vorlen_options INTERFACE
        -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat -Wl,--gc-sections -Wl,-s)
endif()

# vorlen_image(<target>): the options of a library or program. Clang also writes a PDB into the
# same folder; the image contains the PDB's name without the build folder, and a hash instead of the
# time, so that the same inputs give the same bytes. The DWARF sections of the toolchain's archives
# are removed: no debugger reads them beside a PDB.
function(vorlen_image target)
    target_link_libraries(${target} PRIVATE vorlen_options)
    get_target_property(type ${target} TYPE)
    if(MINGW AND type STREQUAL "SHARED_LIBRARY")
        target_link_libraries(${target} PRIVATE gnu_runtime)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        # Relative to the folder of the build, in which the linker runs.
        get_target_property(folder ${target} RUNTIME_OUTPUT_DIRECTORY)
        cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${CMAKE_BINARY_DIR})
        set(pdb ${folder}/$<TARGET_FILE_BASE_NAME:${target}>.pdb)
        target_link_options(${target} PRIVATE
            -Wl,--pdb=${pdb} -Wl,-Xlink=-pdbaltpath:%_PDB%
            -Wl,-Xlink=-pdbsourcepath:/vorlen-monitor -Wl,-Xlink=-Brepro)
        add_custom_command(TARGET ${target} POST_BUILD
            COMMAND ${VORLEN_OBJCOPY} --strip-debug $<TARGET_FILE:${target}>)
    endif()
endfunction()
