set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER clang-14)
set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Clang has no C++ library for this target. It uses GCC's, whose header folders are given here.
execute_process(
    COMMAND x86_64-w64-mingw32-g++-posix -print-libgcc-file-name
    OUTPUT_VARIABLE libgcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET libgcc PARENT_PATH gcc)
set(CMAKE_CXX_FLAGS_INIT
    "-isystem ${gcc}/include/c++ -isystem ${gcc}/include/c++/x86_64-w64-mingw32")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-L${gcc} -fuse-ld=lld -static -lwinpthread")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-L${gcc} -fuse-ld=lld -static -lwinpthread")

include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
