# SPDX-License-Identifier: MIT
# For hosts that Visual C++ builds: the C interface of the DLL as a module definition file and as an
# import library. (The classes are for hosts of the compiler that has built the DLL.)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/morl/c/morl.h)
file(STRINGS ${PROJECT_SOURCE_DIR}/morl/c/morl.h declared REGEX "^MORL_API ")
set(definitions "LIBRARY morl.dll\nEXPORTS\n")
foreach(line IN LISTS declared)
    string(REGEX MATCH "morl_[a-z_]+\\(" name "${line}")
    string(REPLACE "(" "" name "${name}")
    string(APPEND definitions "    ${name}\n")
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/morl.def CONTENT "${definitions}")
add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/morl.lib
    COMMAND ${CMAKE_DLLTOOL} -d morl.def -D morl.dll -l morl.lib
    DEPENDS ${PROJECT_BINARY_DIR}/morl.def
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR})
add_custom_target(morl_visual_cpp ALL DEPENDS ${PROJECT_BINARY_DIR}/morl.lib)
if(MORL_INSTALL)
    install(FILES ${PROJECT_BINARY_DIR}/morl.def ${PROJECT_BINARY_DIR}/morl.lib
        COMPONENT dev DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()
