# What `cmake --install` lays out, and ./package packs: for a host that another compiler builds. The
# import libraries hold the C functions only, those of the .def files.
include(CMakePackageConfigHelpers)

set(package_cmake lib/cmake/vorlen-monitor)

set(images libvorlen_monitor vorlen_runtime)
if(NOT VORLEN_LIBRARIES_ONLY)
    list(APPEND images vorlen-monitor vorlen-monitor-viewer)
endif()
install(TARGETS ${images} RUNTIME DESTINATION bin)
if(MSVC OR CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    foreach(image ${images})
        install(FILES $<TARGET_FILE_DIR:${image}>/$<TARGET_FILE_BASE_NAME:${image}>.pdb
            DESTINATION bin)
    endforeach()
endif()
install(DIRECTORY include/vorlen DESTINATION include)

write_basic_package_version_file(${PROJECT_BINARY_DIR}/vorlen-monitor-config-version.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    cmake/vorlen-monitor-config.cmake
    ${PROJECT_BINARY_DIR}/vorlen-monitor-config-version.cmake
    DESTINATION ${package_cmake})

# An import library for Microsoft's linker (.lib) and one for GNU's (.dll.a).
if(MINGW)
    find_program(LLVM_DLLTOOL llvm-dlltool-14 NO_CMAKE_FIND_ROOT_PATH)
    find_program(GNU_DLLTOOL x86_64-w64-mingw32-dlltool NO_CMAKE_FIND_ROOT_PATH)
    set(import_libraries ${PROJECT_BINARY_DIR}/import_libraries)
    file(MAKE_DIRECTORY ${import_libraries})
    # The prefix of temporary files is part of what GNU's tool writes.
    function(vorlen_import_libraries name definition)
        add_custom_command(
            OUTPUT ${import_libraries}/${name}.lib ${import_libraries}/${name}.dll.a
            COMMAND ${LLVM_DLLTOOL} -m i386:x86-64 -d ${definition} -l ${name}.lib
            COMMAND ${GNU_DLLTOOL} --deterministic-libraries --temp-prefix ${name}
                --input-def ${definition} --output-lib ${name}.dll.a
            DEPENDS ${definition}
            WORKING_DIRECTORY ${import_libraries}
            COMMENT "Making the import libraries of ${name}.dll"
            VERBATIM)
        add_custom_target(${name}_import_libraries ALL
            DEPENDS ${import_libraries}/${name}.lib ${import_libraries}/${name}.dll.a)
        install(FILES ${import_libraries}/${name}.lib ${import_libraries}/${name}.dll.a
            DESTINATION lib)
    endfunction()
    vorlen_import_libraries(libvorlen_monitor ${PROJECT_SOURCE_DIR}/monitor/libvorlen_monitor.def)
    vorlen_import_libraries(vorlen_runtime ${PROJECT_SOURCE_DIR}/runtime/vorlen_runtime.def)
else()
    install(TARGETS libvorlen_monitor vorlen_runtime ARCHIVE DESTINATION lib)
endif()
