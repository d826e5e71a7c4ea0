# SPDX-License-Identifier: MIT
# The tests of the tool need a shell and programs of the machine that builds, so the test programs of
# that machine (MORL_NATIVE_TESTS) run them with a tool that is started by Wine.
set(MORL_NATIVE_TESTS ${PROJECT_SOURCE_DIR}/build/release/tests CACHE PATH
    "The tests of a build for this machine")
set(tool_directory ${PROJECT_BINARY_DIR}/wine_tool)
file(GENERATE OUTPUT ${tool_directory}/morlc CONTENT "#!/bin/sh
exec '${CMAKE_CROSSCOMPILING_EMULATOR}' '$<TARGET_FILE:morlc>' \"$@\"
" FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

function(morl_tool_test name)
    add_test(NAME ${name} COMMAND ${ARGN})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT 600 LABELS cases ENVIRONMENT MORLC=${tool_directory}/morlc)
endfunction()
# Those of "morlc check" need glslang, which the tool for Windows is built without.
foreach(file IN LISTS cases ITEMS windows/tool.txt)
    if(file MATCHES "^cases/tools/|^windows/" AND NOT file MATCHES "check.txt$")
        morl_tool_test(${file}
            ${MORL_NATIVE_TESTS}/case_test ${CMAKE_CURRENT_SOURCE_DIR}/${file} windows)
    endif()
endforeach()
morl_tool_test(build_test ${MORL_NATIVE_TESTS}/build_test)
add_test(NAME windows/package COMMAND sh ${CMAKE_CURRENT_SOURCE_DIR}/windows/package_test.sh
    ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR} ${CMAKE_CROSSCOMPILING_EMULATOR})
set_tests_properties(windows/package PROPERTIES TIMEOUT 600 LABELS package)
# What Microsoft's compiler says. "./dev windows" fetches it and writes the questions.
set(MORL_D3DCOMPILER ${PROJECT_SOURCE_DIR}/build/d3dcompiler/node_modules/webgpu/dist/win32-x64/d3dcompiler_47.dll
    CACHE FILEPATH "Microsoft's d3dcompiler_47.dll, for tests")
find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_test(NAME windows/direct3d COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/windows/direct3d_test.py
    ${tool_directory}/morlc ${MORL_D3DCOMPILER} ${PROJECT_BINARY_DIR}/questions ${PROJECT_SOURCE_DIR}/examples
    ${CMAKE_CURRENT_SOURCE_DIR}/pictures/probes.json)
set_tests_properties(windows/direct3d PROPERTIES TIMEOUT 600 LABELS pictures)
set_tests_properties(windows/tool.txt PROPERTIES
    ENVIRONMENT "MORLC=${tool_directory}/morlc;D3DCOMPILER=${MORL_D3DCOMPILER}")
