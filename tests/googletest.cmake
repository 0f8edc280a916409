# The targets gmock and gmock_main. Debian's package brings GoogleTest as sources, which the
# cross-compiler of this build compiles. On Windows they are a package of vcpkg.json.
if(NOT CMAKE_CROSSCOMPILING)
    find_package(GTest 1.12 CONFIG REQUIRED)
    add_library(gmock ALIAS GTest::gmock)
    add_library(gmock_main ALIAS GTest::gmock_main)
    return()
endif()

set(googletest_sources /usr/src/googletest CACHE PATH "GoogleTest's sources")
if(NOT EXISTS ${googletest_sources}/CMakeLists.txt)
    message(FATAL_ERROR "GoogleTest's sources were not found in ${googletest_sources}: "
        "`./check` installs them (package googletest), or configure with "
        "-Dgoogletest_sources=FOLDER.")
endif()

set(INSTALL_GTEST OFF)
add_subdirectory(${googletest_sources} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
