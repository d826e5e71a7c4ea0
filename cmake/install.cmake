# SPDX-License-Identifier: MIT
# What is installed, and how other projects find it. A component is a package of its own: the shared
# library, what hosts are built with, the tools, and the documents with the samples.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME doc)
install(DIRECTORY morl COMPONENT dev DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp"
    PATTERN internal EXCLUDE)
# For "find_package(morl)", both installed and in the build tree.
configure_package_config_file(cmake/morl-config.cmake.in morl-config.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/morl)
write_basic_package_version_file(morl-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/morl-config.cmake
    ${PROJECT_BINARY_DIR}/morl-config-version.cmake
    cmake/jsoncpp.cmake
    COMPONENT dev DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/morl)
configure_file(cmake/jsoncpp.cmake jsoncpp.cmake COPYONLY)
# One set for each library, as only the static one has a dependency.
set(MORL_EXPORT_SETS morl-static)
if(BUILD_SHARED_LIBS)
    list(APPEND MORL_EXPORT_SETS morl)
    install(TARGETS morl EXPORT morl
        ARCHIVE COMPONENT dev DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY COMPONENT library NAMELINK_COMPONENT dev DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME COMPONENT library DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(TARGETS morl_static EXPORT morl-static ARCHIVE COMPONENT dev DESTINATION ${CMAKE_INSTALL_LIBDIR})
foreach(set IN LISTS MORL_EXPORT_SETS)
    install(EXPORT ${set} NAMESPACE morl:: FILE ${set}-targets.cmake
        COMPONENT dev DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/morl)
    export(EXPORT ${set} NAMESPACE morl:: FILE ${PROJECT_BINARY_DIR}/${set}-targets.cmake)
endforeach()

# For "pkg-config morl"; found relative to itself, so that the prefix can move.
file(RELATIVE_PATH MORL_PC_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" MORL_PC_PREFIX ${MORL_PC_PREFIX})
# Only those who link the static library need JsonCpp; its own .pc file need not be there.
set(MORL_PC_JSONCPP -ljsoncpp)
if(MORL_BUNDLES_JSONCPP)
    set(MORL_PC_JSONCPP "")
endif()
set(MORL_PC_HIDDEN "")
if(MORL_IS_ELF)
    set(MORL_PC_HIDDEN " -Wl,--exclude-libs,libmorl.a")
endif()
configure_file(cmake/morl.pc.in morl.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/morl.pc COMPONENT dev DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(MORL_TOOLS)
    install(TARGETS morlc RUNTIME COMPONENT tools DESTINATION ${CMAKE_INSTALL_BINDIR})
    if(MORL_TOOL_FILES)
        set(files ${PROJECT_BINARY_DIR}/man)
        if(NOT MORL_DEBIAN)
            install(FILES ${files}/morlc.1 COMPONENT tools DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
        endif()
        install(FILES ${files}/morlc.bash COMPONENT tools RENAME morlc
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
        install(FILES ${files}/morlc.zsh COMPONENT tools RENAME _morlc
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
        install(FILES ${files}/morlc.fish COMPONENT tools
            DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
    endif()
endif()
install(FILES LICENSE README.md CHANGELOG.md CONTRIBUTING.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.json")
install(FILES bindings/js/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR}/bindings/js)
# The live page, if it was built ("./dev web build").
install(DIRECTORY web/dist/ DESTINATION ${CMAKE_INSTALL_DATADIR}/morl/web OPTIONAL)
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/morl/examples
    PATTERN build EXCLUDE)

if(PROJECT_IS_TOP_LEVEL)
    include(cmake/package.cmake)
endif()
