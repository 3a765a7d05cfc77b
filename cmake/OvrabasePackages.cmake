# Describes the Debian packages, which `cpack` makes from a build with the prefix /usr: see
# tools/package.sh.
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development documentation)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)
set(CPACK_PACKAGE_CONTACT "The ovrabase authors <ovrabase@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "base library of a desktop graphics application")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libovrabase${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# The library loads FreeImage by name, so dpkg-shlibdeps does not find this dependency.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS libfreeimage3)
file(WRITE "${PROJECT_BINARY_DIR}/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/triggers")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"Errors, logs, services, files, text and devices for the modules of an
application on Qt 6.
.
This package has the library, which is all that a program needs to run.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libovrabase-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION}), qt6-base-dev (>= 6.4)"
)
# Callers of SpdlogDelegate need spdlog; the header itself only declares a class of it.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libspdlog-dev)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"Errors, logs, services, files, text and devices for the modules of an
application on Qt 6.
.
This package has what projects build with: headers, the link libovrabase.so,
the CMake package, the pkg-config file and the template for translations.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME ovrabase-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION
"Errors, logs, services, files, text and devices for the modules of an
application on Qt 6.
.
This package has the README, the changelog and the pages of the
documentation.")

# Each Debian package must contain the licence and the changelog.
find_program(OVRABASE_GZIP gzip)
mark_as_advanced(OVRABASE_GZIP)
set(changes "${PROJECT_BINARY_DIR}/changelog.gz")
if(OVRABASE_GZIP)
    execute_process(COMMAND "${OVRABASE_GZIP}" -9nc "${PROJECT_SOURCE_DIR}/CHANGELOG.md" OUTPUT_FILE "${changes}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)
endif()
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" name)
    set(folder "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}")
    install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" RENAME copyright
        DESTINATION "${folder}" COMPONENT ${component} EXCLUDE_FROM_ALL
    )
    if(OVRABASE_GZIP)
        install(FILES "${changes}" DESTINATION "${folder}" COMPONENT ${component} EXCLUDE_FROM_ALL)
    endif()
endforeach()

include(CPack)
