# vorlen_options: an interface target that every target of this project links. Warnings are errors.
# Every image has dynamic base, high-entropy addresses and NX.
add_library(vorlen_options INTERFACE)
target_compile_features(vorlen_options INTERFACE cxx_std_20)
target_compile_definitions(vorlen_options INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN WINVER=0x0A00 _WIN32_WINNT=0x0A00)

if(MSVC)
    include(${CMAKE_CURRENT_LIST_DIR}/microsoft_options.cmake)
else()
    include(${CMAKE_CURRENT_LIST_DIR}/gnu_options.cmake)
endif()

# vorlen_image(<target>): the options of a library or program. Clang also writes a PDB into the
# same folder, as Microsoft's linker does; the image contains the PDB's name without the build
# folder, and a hash instead of the time, so that the same inputs give the same bytes. The DWARF
# sections of the toolchain's archives are removed: no debugger reads them beside a PDB.
function(vorlen_image target)
    target_link_libraries(${target} PRIVATE vorlen_options)
    get_target_property(type ${target} TYPE)
    if(MINGW AND type STREQUAL "SHARED_LIBRARY")
        target_link_libraries(${target} PRIVATE gnu_runtime)
    endif()
    if(MINGW AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        # What each part of the image takes: ./bench reads it.
        target_link_options(${target} PRIVATE -Wl,-Map=lib/$<TARGET_FILE_BASE_NAME:${target}>.map)
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
