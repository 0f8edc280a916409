# Debian's package brings GoogleTest as sources, which the toolchain of this build compiles.
set(googletest_sources /usr/src/googletest CACHE PATH "GoogleTest's sources")
if(NOT EXISTS ${googletest_sources}/CMakeLists.txt)
    message(FATAL_ERROR "GoogleTest's sources were not found in ${googletest_sources}: "
        "`./check` installs them (package googletest), or configure with "
        "-Dgoogletest_sources=FOLDER.")
endif()

set(INSTALL_GTEST OFF)
add_subdirectory(${googletest_sources} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
