# CPack adds scripts that call ldconfig to every package with a library. Debian requires a trigger instead, which these
# packages have. This builds the packages again without the scripts.
set(opened ${CPACK_TEMPORARY_DIRECTORY}/opened)
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    file(REMOVE_RECURSE ${opened})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${opened} COMMAND_ERROR_IS_FATAL ANY)
    if(EXISTS ${opened}/DEBIAN/triggers)
        file(REMOVE ${opened}/DEBIAN/postinst ${opened}/DEBIAN/postrm)
        execute_process(COMMAND dpkg-deb --root-owner-group --build ${opened} ${package}
            OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()
file(REMOVE_RECURSE ${opened})
