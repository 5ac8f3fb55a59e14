# What a caller gets: headers, both libraries, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/KvxDemosaicing DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
install(TARGETS KvxDemosaicing KvxMisc EXPORT KvxDemosaicingTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/KvxDemosaicing)
install(EXPORT KvxDemosaicingTargets NAMESPACE KvxDemosaicing:: FILE KvxDemosaicingConfig.cmake
    DESTINATION ${package_dir} COMPONENT dev)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KvxDemosaicingConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KvxDemosaicingConfigVersion.cmake DESTINATION ${package_dir} COMPONENT dev)

file(RELATIVE_PATH KVX_PC_TO_INCLUDE /${CMAKE_INSTALL_LIBDIR}/pkgconfig /${CMAKE_INSTALL_INCLUDEDIR})
configure_file(${PROJECT_SOURCE_DIR}/cmake/KvxDemosaicing.pc.in ${PROJECT_BINARY_DIR}/KvxDemosaicing.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/KvxDemosaicing.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
