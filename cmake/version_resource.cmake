# vorlen_version_resource(<target> <file name> <description>): the properties that Windows shows of
# a library or program.
function(vorlen_version_resource target file_name description)
    get_target_property(type ${target} TYPE)
    file(STRINGS ${PROJECT_SOURCE_DIR}/LICENSE copyright REGEX "^Copyright")
    set(file_type VFT_APP)
    if(type STREQUAL "SHARED_LIBRARY")
        set(file_type VFT_DLL)
    endif()
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${resource} @ONLY)
    target_sources(${target} PRIVATE ${resource})
endfunction()
