# What a caller gets: headers, libraries, a CMake package and pkg-config files. The frame layer has components of its own.
include(CMakePackageConfigHelpers)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/KvxDemosaicing DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
install(TARGETS KvxMisc EXPORT KvxDemosaicingTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT misc NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(TARGETS KvxDemosaicing EXPORT KvxDemosaicingTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/KvxFrame DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT frame-dev)
install(TARGETS KvxFrame EXPORT KvxFrameTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT frame NAMELINK_COMPONENT frame-dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT frame-dev)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/KvxDemosaicing)
install(EXPORT KvxDemosaicingTargets NAMESPACE KvxDemosaicing:: DESTINATION ${package_dir} COMPONENT dev)
install(EXPORT KvxFrameTargets NAMESPACE KvxDemosaicing:: DESTINATION ${package_dir} COMPONENT frame-dev)
configure_file(${PROJECT_SOURCE_DIR}/cmake/KvxDemosaicingConfig.cmake.in KvxDemosaicingConfig.cmake @ONLY)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KvxDemosaicingConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KvxDemosaicingConfig.cmake ${PROJECT_BINARY_DIR}/KvxDemosaicingConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT dev)

file(RELATIVE_PATH KVX_PC_TO_INCLUDE /${CMAKE_INSTALL_LIBDIR}/pkgconfig /${CMAKE_INSTALL_INCLUDEDIR})
if(KVX_STATIC)  # archives leave it to the program to link what they need
    set(KVX_PC_STATIC_KvxDemosaicing "-lKvxMisc -lhwy ${OpenMP_CXX_FLAGS} -lstdc++ -lm")
    set(KVX_PC_STATIC_KvxFrame "-lfmt -lpng -lhwy ${OpenMP_CXX_FLAGS} -lstdc++ -lm")
endif()
foreach(library KvxDemosaicing KvxFrame)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/KvxDemosaicing.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
install(FILES ${PROJECT_BINARY_DIR}/KvxFrame.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT frame-dev)
