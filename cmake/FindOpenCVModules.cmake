# Finds single modules of OpenCV. Debian's per-module packages have neither CMake nor pkg-config files, and the package
# that has them depends on half a gigabyte of unused modules.
#
#   find_package(OpenCVModules 3.4 REQUIRED COMPONENTS core imgproc)
#
# defines OpenCVModules::<module> for each component, and OpenCVModules_VERSION.
find_path(OpenCVModules_INCLUDE_DIR opencv2/core/version.hpp PATH_SUFFIXES opencv4)
mark_as_advanced(OpenCVModules_INCLUDE_DIR)
if(OpenCVModules_INCLUDE_DIR)
    file(READ ${OpenCVModules_INCLUDE_DIR}/opencv2/core/version.hpp header)
    set(OpenCVModules_VERSION "")
    foreach(part MAJOR MINOR REVISION)
        string(REGEX MATCH "CV_VERSION_${part} +([0-9]+)" unused "${header}")
        list(APPEND OpenCVModules_VERSION ${CMAKE_MATCH_1})
    endforeach()
    list(JOIN OpenCVModules_VERSION . OpenCVModules_VERSION)
endif()

foreach(module IN LISTS OpenCVModules_FIND_COMPONENTS)
    find_library(OpenCVModules_${module}_LIBRARY opencv_${module})
    mark_as_advanced(OpenCVModules_${module}_LIBRARY)
    if(OpenCVModules_${module}_LIBRARY)
        set(OpenCVModules_${module}_FOUND TRUE)
        if(NOT TARGET OpenCVModules::${module})
            add_library(OpenCVModules::${module} UNKNOWN IMPORTED)
            set_target_properties(OpenCVModules::${module} PROPERTIES
                IMPORTED_LOCATION ${OpenCVModules_${module}_LIBRARY}
                INTERFACE_INCLUDE_DIRECTORIES ${OpenCVModules_INCLUDE_DIR})
        endif()
    endif()
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVModules
    REQUIRED_VARS OpenCVModules_INCLUDE_DIR
    VERSION_VAR OpenCVModules_VERSION
    HANDLE_COMPONENTS)
