# Clang in Microsoft's mode: it takes the options and the extensions of Microsoft's compiler, lays
# out and names everything as that compiler does, and finds what that compiler refuses. It has
# libc++'s headers as C++ library and MinGW's as Windows SDK and C library; include/ has what both
# lack. There are no libraries of either: objects are made, and the images are empty.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

foreach(language C CXX)
    set(CMAKE_${language}_COMPILER /usr/lib/llvm-14/bin/clang-cl)
    set(CMAKE_${language}_COMPILER_TARGET x86_64-pc-windows-msvc)
endforeach()
set(CMAKE_LINKER ${CMAKE_CURRENT_LIST_DIR}/../../scripts/lib/no_linker)
set(CMAKE_AR llvm-lib-14)
set(CMAKE_MT /bin/true)
set(CMAKE_RC_COMPILER llvm-rc-14)

execute_process(
    COMMAND clang-14 -print-resource-dir
    OUTPUT_VARIABLE clang OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
# libc++ must precede Clang's own headers.
set(microsoft "-nobuiltininc")
foreach(folder ${CMAKE_CURRENT_LIST_DIR}/include /usr/lib/llvm-16/include/c++/v1 ${clang}/include
        /usr/share/mingw-w64/include)
    string(APPEND microsoft " -imsvc${folder}")
endforeach()
# Definitions of Microsoft's headers.
foreach(definition _UCRT _CONST_RETURN=const _CRT_CONST_CORRECT_OVERLOADS _HAS_EXCEPTIONS=1)
    string(APPEND microsoft " -D${definition}")
endforeach()
set(CMAKE_C_FLAGS_INIT ${microsoft})
set(CMAKE_CXX_FLAGS_INIT ${microsoft})
set(CMAKE_RC_FLAGS_INIT "-I /usr/share/mingw-w64/include")
