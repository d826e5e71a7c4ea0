# SPDX-License-Identifier: MIT
# What Debian's policy asks of each package besides its files. Used for packages only ("./dev deb"): a
# plain installation has none of it.
set(MORL_DEBIAN_PACKAGES library:libmorl${PROJECT_VERSION_MAJOR} dev:libmorl-dev tools:morl-tools doc:morl-doc)
# The tool is linked with these.
foreach(package IN ITEMS libcli11-dev glslang-dev)
    if(EXISTS /usr/share/doc/${package}/copyright)
        list(APPEND MORL_DEBIAN_NOTICES /usr/share/doc/${package}/copyright)
    endif()
endforeach()

# Compresses a file as Debian does, without its name and date.
function(morl_compress source result)
    add_custom_command(OUTPUT ${result}
        COMMAND gzip -9nc ${source} > ${result}
        DEPENDS ${source} VERBATIM)
endfunction()

configure_file(${PROJECT_SOURCE_DIR}/packaging/debian/changelog.in changelog.Debian @ONLY)
morl_compress(${PROJECT_BINARY_DIR}/changelog.Debian ${PROJECT_BINARY_DIR}/changelog.Debian.gz)
morl_compress(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_BINARY_DIR}/changelog.gz)
morl_compress(${PROJECT_BINARY_DIR}/man/morlc.1 ${PROJECT_BINARY_DIR}/morlc.1.gz)
add_custom_target(morl_debian ALL DEPENDS
    ${PROJECT_BINARY_DIR}/changelog.Debian.gz ${PROJECT_BINARY_DIR}/changelog.gz ${PROJECT_BINARY_DIR}/morlc.1.gz)
add_dependencies(morl_debian morl_tool_files)

foreach(entry IN LISTS MORL_DEBIAN_PACKAGES)
    string(REPLACE ":" ";" entry ${entry})
    list(GET entry 0 component)
    list(GET entry 1 package)
    set(folder ${CMAKE_INSTALL_DATADIR}/doc/${package})
    install(FILES
        packaging/debian/copyright
        ${PROJECT_BINARY_DIR}/changelog.Debian.gz
        ${PROJECT_BINARY_DIR}/changelog.gz
        COMPONENT ${component} DESTINATION ${folder})
    string(TOUPPER ${component} COMPONENT)
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${package})
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/morlc.1.gz COMPONENT tools DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
foreach(notice IN LISTS MORL_DEBIAN_NOTICES)
    get_filename_component(package ${notice} DIRECTORY)
    get_filename_component(package ${package} NAME)
    install(FILES ${notice} COMPONENT tools
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/morl-tools/licences RENAME ${package}.txt)
endforeach()

math(EXPR MORL_NEXT_MINOR "${PROJECT_VERSION_MINOR} + 1")
set(exact "libmorl${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL library dev tools doc)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
# The loader's cache, and what packages that are linked with the library depend on: hosts in C++ need
# this minor version.
configure_file(${PROJECT_SOURCE_DIR}/packaging/debian/shlibs.in shlibs @ONLY)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/packaging/debian/triggers ${PROJECT_BINARY_DIR}/shlibs)
install(FILES packaging/debian/lintian-overrides COMPONENT library
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME libmorl${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
    "Turns graphs of shader nodes into HLSL, GLSL and GLSL ES, inside an engine or\nan editor.")
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${exact}")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "libjsoncpp-dev, morl-doc")
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "Headers, the static library, a CMake package and a pkg-config file. Those who\nlink the static library need libjsoncpp-dev.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${exact}")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "morl-doc")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
    "The tool morlc compiles and checks shaders, builds all variants of a manifest,\nand lists and draws the graph.")
set(CPACK_DEBIAN_DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOC_DESCRIPTION
    "The description of the language, guides for engine programmers, and a library\nof sample nodes with their shaders.")
# The tool's library is in the other package, whose exact version it needs.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
