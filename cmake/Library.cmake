# kvx_library(NAME): a library that exports the names in NAME.map and finds its neighbours; with KVX_STATIC an archive.
# Callers link KvxDemosaicing::NAME, installed or not.
function(kvx_library library)
    if(KVX_STATIC)
        add_library(${library} STATIC)
    else()
        add_library(${library} SHARED)
        set(map ${CMAKE_CURRENT_SOURCE_DIR}/${library}.map)
        set_target_properties(${library} PROPERTIES
            VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
            INSTALL_RPATH "$ORIGIN"  # each other's neighbours wherever they are installed
            LINK_DEPENDS ${map})
        # nodelete: threads of the OpenMP runtime that wait for the next frame must not lose their code by dlclose().
        target_link_options(${library} PRIVATE LINKER:--version-script=${map} LINKER:-z,nodelete)
        if(NOT CMAKE_CXX_FLAGS MATCHES -fsanitize)  # its runtime is undefined in a library until the program loads
            target_link_options(${library} PRIVATE LINKER:--no-undefined)
        endif()
    endif()
    add_library(KvxDemosaicing::${library} ALIAS ${library})
    target_include_directories(${library} INTERFACE
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()

# kvx_describe_types(TARGET): types for the comparison of binary interfaces (abi/), in the folder of the target.
# Not where a file is compiled for every instruction set: there it costs megabytes and half as much time again, and
# nothing is exported.
function(kvx_describe_types target)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL GNU OR KVX_STATIC)
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
