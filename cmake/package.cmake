# SPDX-License-Identifier: MIT
# "cpack" makes packages: for Debian, if the build is for that ("./dev deb"), otherwise a ZIP.
set(CPACK_GENERATOR ZIP)
if(MORL_DEBIAN)
    set(CPACK_GENERATOR DEB)
endif()
set(CPACK_PACKAGE_NAME morl)
set(CPACK_PACKAGE_VENDOR "The morl developers")
set(CPACK_PACKAGE_CONTACT "The morl developers <morl@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
if(NOT WIN32)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
endif()
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# Depends on the shared libraries that the binaries need.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
if(MORL_DEBIAN)
    include(cmake/debian.cmake)
endif()

# The licences of what a self-contained DLL and tool are linked with.
if(MORL_BUNDLES_JSONCPP)
    install(FILES ${MORL_JSONCPP_SOURCE}/LICENSE
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/licences RENAME jsoncpp.txt)
endif()
if(MINGW)
    foreach(licence IN ITEMS gcc-mingw-w64-base mingw-w64-common libcli11-dev)
        if(EXISTS /usr/share/doc/${licence}/copyright)
            install(FILES /usr/share/doc/${licence}/copyright
                DESTINATION ${CMAKE_INSTALL_DOCDIR}/licences RENAME ${licence}.txt)
        endif()
    endforeach()
endif()
include(CPack)
