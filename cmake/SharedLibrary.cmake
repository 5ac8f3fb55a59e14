# kvx_shared_library(TARGET MAP): a library that exports what the version script says and finds its neighbours.
function(kvx_shared_library library map)
    target_include_directories(${library} INTERFACE
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    set_target_properties(${library} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN"  # each other's neighbours wherever they are installed
        LINK_DEPENDS ${map})
    # nodelete: threads of the OpenMP runtime that wait for the next frame must not lose their code by dlclose().
    target_link_options(${library} PRIVATE LINKER:--version-script=${map} LINKER:-z,nodelete)
    if(NOT CMAKE_CXX_FLAGS MATCHES -fsanitize)  # a sanitizer's runtime is undefined in a library until the program loads
        target_link_options(${library} PRIVATE LINKER:--no-undefined)
    endif()
endfunction()

# kvx_describe_types(TARGET): types for the comparison of binary interfaces (abi/), in the folder of the target.
# Not where a file is compiled for every instruction set: there it costs megabytes and half as much time again, and
# nothing is exported.
function(kvx_describe_types target)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        return()
    endif()
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        file(STRINGS ${source} per_instruction_set REGEX "hwy/foreach_target" LIMIT_COUNT 1)
        if(NOT per_instruction_set)
            set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS "-g;-femit-class-debug-always")
        endif()
    endforeach()
endfunction()
