# What the acceptance kit takes of the tests: `cmake --install BUILD --component acceptance` copies
# every program and library in the folder tests of the build, with its place in that folder. A folder
# whose tests read a file installs it itself.
function(install_test_images folder)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        get_target_property(place ${target} RUNTIME_OUTPUT_DIRECTORY)
        if(type MATCHES "EXECUTABLE|SHARED_LIBRARY" AND place MATCHES "^${PROJECT_BINARY_DIR}/tests")
            cmake_path(RELATIVE_PATH place BASE_DIRECTORY ${PROJECT_BINARY_DIR})
            install(PROGRAMS $<TARGET_FILE:${target}> DESTINATION ${place}
                COMPONENT acceptance EXCLUDE_FROM_ALL)
        endif()
    endforeach()
    get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(each IN LISTS folders)
        install_test_images(${each})
    endforeach()
endfunction()
install_test_images(${CMAKE_CURRENT_SOURCE_DIR})
