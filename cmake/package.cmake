# SPDX-License-Identifier: MIT
# "cpack" makes a Debian package of all that is installed.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME morl)
set(CPACK_PACKAGE_VENDOR "The morl developers")
set(CPACK_PACKAGE_CONTACT "The morl developers <morl@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "The library with its headers, the command-line tool morlc with its manual\n page, and a library of sample nodes.")
# Depends on the shared libraries that the binaries need, and suggests what linking the static
# library needs.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libjsoncpp-dev")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
include(CPack)
