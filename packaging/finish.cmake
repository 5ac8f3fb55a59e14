# CPack runs this after it has staged the components and before it builds the packages. CPack's variables are set.
set(staged ${CPACK_TEMPORARY_DIRECTORY})
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)  # SOURCE_DATE_EPOCH, if set
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(name ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    set(root ${staged}/${component}${CPACK_PACKAGING_INSTALL_PREFIX})

    set(documents ${root}/share/doc/${name})
    file(COPY ${CPACK_KVX_SOURCE_DIR}/packaging/copyright DESTINATION ${documents})
    configure_file(${CPACK_KVX_SOURCE_DIR}/CHANGELOG.md ${documents}/changelog COPYONLY)
    file(WRITE ${documents}/changelog.Debian
        "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) bookworm; urgency=medium\n\n"
        "  * Packages by the project itself; see changelog.gz for the changes.\n\n"
        " -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${date}\n")
    file(GLOB compressed ${documents}/changelog* ${root}/share/man/man*/*)
    execute_process(COMMAND gzip -9n ${compressed} COMMAND_ERROR_IS_FATAL ANY)

    # The packages of this build's own libraries, for dpkg-shlibdeps. CPack removes the folder afterwards.
    if(NOT DEFINED CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS)
        file(COPY ${CPACK_KVX_SHLIBS_LOCAL} DESTINATION ${staged}/${component}/debian)
    endif()
endforeach()
