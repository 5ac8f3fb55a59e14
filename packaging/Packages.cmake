# The Debian packages, which `cpack` writes in a build directory of the preset `package` (docs/packages.md).
#
#   kvx_package(COMPONENT PACKAGE SECTION ... SUMMARY ... DESCRIPTION ...
#               [LIBRARY ...] [DEPENDS ...] [SUGGESTS ...] [SCRIPTS ...])
#
# defines the package of an install component. A component without install rules gives no package.
if(NOT KVX_PACKAGE_MAINTAINER)
    message(FATAL_ERROR "Packages need a maintainer: -DKVX_PACKAGE_MAINTAINER='Name <address>'")
endif()
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kvxdemosaicing)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # otherwise the project's summary precedes that of each package
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE ${CPACK_PACKAGE_NAME})
set(CPACK_DEBIAN_PACKAGE_RELEASE 0kvx1)  # lower than any revision of Debian's own
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${KVX_PACKAGE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/frame)
# Steps without CPack variables: documentation, compressed manual pages, dependencies between the libraries.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/finish.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/drop_ldconfig.cmake)
set(CPACK_KVX_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_KVX_SHLIBS_LOCAL ${PROJECT_BINARY_DIR}/packaging/shlibs.local)

set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
file(WRITE ${CPACK_KVX_SHLIBS_LOCAL} "")
set(CPACK_COMPONENTS_ALL "")
get_cmake_property(unpackaged COMPONENTS)

macro(kvx_package component name)
    cmake_parse_arguments(package "" "SECTION;SUMMARY;DESCRIPTION;LIBRARY" "DEPENDS;SUGGESTS;SCRIPTS" ${ARGN})
    if(${component} IN_LIST unpackaged)
        list(REMOVE_ITEM unpackaged ${component})
        list(APPEND CPACK_COMPONENTS_ALL ${component})
        string(TOUPPER ${component} prefix)
        string(PREPEND prefix CPACK_DEBIAN_)
        set(${prefix}_PACKAGE_NAME ${name})
        set(${prefix}_PACKAGE_SECTION ${package_SECTION})
        set(${prefix}_DESCRIPTION "${package_SUMMARY}\n${package_DESCRIPTION}")
        list(JOIN package_DEPENDS ", " ${prefix}_PACKAGE_DEPENDS)
        list(JOIN package_SUGGESTS ", " ${prefix}_PACKAGE_SUGGESTS)
        list(TRANSFORM package_SCRIPTS PREPEND ${PROJECT_SOURCE_DIR}/packaging/)
        if(package_LIBRARY)
            set(shlibs "${package_LIBRARY} ${PROJECT_VERSION_MAJOR} ${name} (>= ${PROJECT_VERSION})\n")
            file(APPEND ${CPACK_KVX_SHLIBS_LOCAL} ${shlibs})
            file(WRITE ${PROJECT_BINARY_DIR}/packaging/${name}/shlibs ${shlibs})
            list(APPEND package_SCRIPTS
                ${PROJECT_BINARY_DIR}/packaging/${name}/shlibs ${PROJECT_SOURCE_DIR}/packaging/triggers)
        endif()
        set(${prefix}_PACKAGE_CONTROL_EXTRA ${package_SCRIPTS})
        if(package_SECTION STREQUAL libdevel)
            set(${prefix}_PACKAGE_SHLIBDEPS OFF)  # headers and links only
        endif()
    endif()
endmacro()

set(library_text "KvxDemosaicing converts the raw frames of colour cameras to RGB images:
Bayer mosaics of 8 to 16 bits and TrueSense mosaics (half panchromatic) of
8 to 14 bits, in the caller's buffers, at frame rate and with the same bits
for any number of threads.
.")
set(frame_text "The frame layer over KvxDemosaicing knows formats by the names of PFNC,
GStreamer, V4L2 and OpenCV, unpacks packed samples, and applies black level,
white balance, colour matrix and tone curve.
.")
kvx_package(misc libkvxmisc3 SECTION libs LIBRARY libKvxMisc
    SUMMARY "parameter store of image processing components"
    DESCRIPTION "Named integer, floating-point and Boolean parameters with ranges and result
codes for the components of KvxDemosaicing.
.
This package has the shared library, which components can share.")
kvx_package(runtime libkvxdemosaicing3 SECTION libs LIBRARY libKvxDemosaicing
    SUMMARY "demosaicing of raw camera frames"
    DESCRIPTION "${library_text}
This package has the shared library.")
kvx_package(frame libkvxframe3 SECTION libs LIBRARY libKvxFrame
    SUMMARY "convert camera frames in any format to images in any format"
    DESCRIPTION "${frame_text}
This package has the shared library.")
kvx_package(dev libkvxdemosaicing-dev SECTION libdevel
    DEPENDS "libkvxdemosaicing3 (= ${version})" "libkvxmisc3 (= ${version})"
    SUMMARY "demosaicing of raw camera frames (development files)"
    DESCRIPTION "${library_text}
This package has the headers, which compile as C11 and as C++17, the CMake
package and the pkg-config file.")
kvx_package(frame-dev libkvxframe-dev SECTION libdevel
    DEPENDS "libkvxframe3 (= ${version})" "libkvxdemosaicing-dev (= ${version})"
    SUMMARY "convert camera frames in any format (development files)"
    DESCRIPTION "${frame_text}
This package has the C++17 headers, the CMake targets and the pkg-config
file.")
kvx_package(tools kvx-demosaic SECTION graphics SUGGESTS bash-completion
    SUMMARY "convert raw camera frames to images on the command line"
    DESCRIPTION "The tool kvx-demosaic converts raw Bayer and TrueSense frames, packed or not,
to PNG, TIFF, PPM or raw images, many in parallel, with white balance, colour
matrix and tone curve. It makes raw frames from images, guesses unknown
formats, explains known formats and compares the algorithms of
KvxDemosaicing.")
kvx_package(gstreamer gstreamer1.0-kvxdemosaic SECTION video
    SUMMARY "GStreamer element for raw camera video"
    DESCRIPTION "The element kvxdemosaic converts raw Bayer and TrueSense video to RGB video
with the algorithms of KvxDemosaicing.")
kvx_package(python python3-kvxdemosaicing SECTION python
    DEPENDS "python3 (>= 3.11)" "python3 (<< 3.12)" python3-numpy
    SUGGESTS kvx-demosaic
    SCRIPTS python3/postinst python3/prerm
    SUMMARY "convert raw camera frames to images in Python"
    DESCRIPTION "The module kvxdemosaicing converts NumPy arrays with raw Bayer and TrueSense
frames to RGB arrays with the algorithms of KvxDemosaicing, without copies and
without holding the interpreter lock.")

if(unpackaged)
    message(FATAL_ERROR "Components without a package: ${unpackaged}")
endif()
include(CPack)
