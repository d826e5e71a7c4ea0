# SPDX-License-Identifier: MIT
# An overlay port for the sources that it lies in.
get_filename_component(SOURCE_PATH "${CURRENT_PORT_DIR}/../.." ABSOLUTE)
vcpkg_check_features(OUT_FEATURE_OPTIONS options FEATURES tools MORL_TOOLS)
string(COMPARE EQUAL "${VCPKG_LIBRARY_LINKAGE}" dynamic shared)
vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS ${options} -DBUILD_SHARED_LIBS=${shared} -DMORL_TESTS=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME morl CONFIG_PATH lib/cmake/morl)
vcpkg_fixup_pkgconfig()
vcpkg_copy_pdbs()
if("tools" IN_LIST FEATURES)
    vcpkg_copy_tools(TOOL_NAMES morlc AUTO_CLEAN)
endif()
file(REMOVE_RECURSE
    "${CURRENT_PACKAGES_DIR}/debug/include"
    "${CURRENT_PACKAGES_DIR}/debug/share"
    "${CURRENT_PACKAGES_DIR}/share/doc")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
