# A host of Microsoft's compiler, or of Clang in its mode, compiles each public header alone with its
# usual options: as C11 where the header is C, as C++17 and as C++20.
function(compile_header_alone header language standard)
    set(name header_${header}_${language}${standard})
    string(REPLACE . _ name ${name})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.${language})
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"vorlen/${header}\"\n")
    add_library(${name} OBJECT ${source})
    set_target_properties(${name} PROPERTIES C_STANDARD ${standard} CXX_STANDARD ${standard})
    target_compile_options(${name} PRIVATE /W4 /WX /permissive- /EHsc
        $<$<CXX_COMPILER_ID:Clang>:-Wconversion>)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/include)
endfunction()

foreach(header diagnostics.h monitor.h runtime.h)
    compile_header_alone(${header} c 11)
endforeach()
foreach(header diagnostics.h monitor.h monitor.hpp runtime.h status.h)
    compile_header_alone(${header} cpp 17)
    compile_header_alone(${header} cpp 20)
endforeach()
