# vorlen_header_only_library(<name> <folder>): a header-only library from the packages of the build
# machine. The folder is copied into the build, because /usr/include as an include path would add
# the build machine's C headers to a build for Windows.
function(vorlen_header_only_library name folder)
    add_library(${name} INTERFACE)
    find_path(${name}_ROOT NAMES ${folder} PATHS /usr/include NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    if(NOT ${name}_ROOT)
        message(FATAL_ERROR "The headers <${folder}/...> were not found in /usr/include: "
            "`./run` and `./check` install them.")
    endif()
    file(COPY ${${name}_ROOT}/${folder} DESTINATION ${PROJECT_BINARY_DIR}/staged/${name})
    target_include_directories(${name} SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/staged/${name})
endfunction()

if(CMAKE_CROSSCOMPILING)
    vorlen_header_only_library(cli11 CLI)
    vorlen_header_only_library(nlohmann_json nlohmann)
else()
    find_package(CLI11 2.1 REQUIRED)
    # Asked for without a version, the package defines a target with the name of the alias.
    find_package(nlohmann_json 3.11 REQUIRED)
    add_library(cli11 ALIAS CLI11::CLI11)
    add_library(nlohmann_json ALIAS nlohmann_json::nlohmann_json)
endif()
