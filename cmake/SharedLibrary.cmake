# kvx_shared_library(TARGET MAP): a library that exports what the version script says and finds its neighbours.
function(kvx_shared_library library map)
    target_include_directories(${library} INTERFACE
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    set_target_properties(${library} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN"  # each other's neighbours wherever they are installed
        LINK_DEPENDS ${map})
    target_link_options(${library} PRIVATE LINKER:--version-script=${map})
    if(NOT CMAKE_CXX_FLAGS MATCHES -fsanitize)  # a sanitizer's runtime is undefined in a library until the program loads
        target_link_options(${library} PRIVATE LINKER:--no-undefined)
    endif()
endfunction()
