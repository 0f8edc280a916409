# The options of GCC and Clang.
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
else()
    target_compile_options(vorlen_options INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
    target_link_options(vorlen_options INTERFACE -Wl,-s)
endif()
target_link_options(vorlen_options INTERFACE
    -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat -Wl,--gc-sections)
