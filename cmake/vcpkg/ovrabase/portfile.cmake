# A port for the option --overlay-ports of vcpkg. It builds the checkout that contains this file.
cmake_path(GET CURRENT_PORT_DIR PARENT_PATH ports)
cmake_path(SET sources NORMALIZE "${ports}/../..")

vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
vcpkg_cmake_configure(
    SOURCE_PATH "${sources}"
    OPTIONS -DOVRABASE_BUILD_TESTS=OFF -DOVRABASE_BUILD_EXAMPLES=OFF -DOVRABASE_WITH_STLAB=ON
)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/ovrabase)
vcpkg_fixup_pkgconfig()
vcpkg_copy_pdbs()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
