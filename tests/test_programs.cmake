# vorlen_tests(<name> SOURCES ... [LIBRARIES ...] [NEEDS ...] [FOLDER <folder>] [UNACCOUNTED]): a
# test program and its CTest entry, which is called <name>. It links the libraries; the targets that
# it needs are built before it, for it to load. FOLDER, below the tests' own, is where a program lies
# that imports a library lying there. The order of the tests is another in every run; GoogleTest
# prints the seed. Each test must end with as much memory, handles and thread slots as it began with,
# unless the program is UNACCOUNTED: what it tests keeps something for the life of the process.
#
# GNU [<pattern>...] marks what depends on the toolchains of MinGW, and is left out with Microsoft's
# compiler: the tests whose names match a pattern, or, without a pattern, all of the program, which
# then has the label gnu. They count what an image takes from the C library's heap, or list its
# imports: Microsoft's C++ library is an image of its own, so that other calls are made.
function(vorlen_tests name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "UNACCOUNTED" "FOLDER" "SOURCES;LIBRARIES;NEEDS;GNU")
    set(program ${name}_tests)
    add_executable(${program} ${arg_SOURCES}
        ${PROJECT_SOURCE_DIR}/tests/support/crash_report.cpp
        ${PROJECT_SOURCE_DIR}/tests/support/heap_check.cpp
        ${PROJECT_SOURCE_DIR}/tests/support/simulation_reports.cpp)
    # Microsoft's C library has no heap of its own: blocks of the system are in it, too.
    if(NOT arg_UNACCOUNTED AND NOT MSVC)
        target_sources(${program} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/accounting.cpp)
    endif()
    set_target_properties(${program} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests/${arg_FOLDER})
    target_link_libraries(${program} PRIVATE test_fixtures gmock_main ${arg_LIBRARIES})
    if(arg_NEEDS)
        add_dependencies(${program} ${arg_NEEDS})
    endif()
    set(options --gtest_shuffle)
    if(MSVC AND arg_GNU)
        list(JOIN arg_GNU ":" patterns)
        list(APPEND options --gtest_filter=-${patterns})
    endif()
    set(labels simulated)
    if("GNU" IN_LIST arg_KEYWORDS_MISSING_VALUES)
        list(APPEND labels gnu)
    endif()
    add_test(NAME ${name} COMMAND ${program} ${options})
    set_tests_properties(${name} PROPERTIES
        LABELS "${labels}"
        TIMEOUT 120
        FAIL_REGULAR_EXPRESSION ":heap:" # what Wine says when it checks the heap
        ENVIRONMENT "WINEDLLOVERRIDES=mscoree,mshtml,winedbg.exe=")
endfunction()
