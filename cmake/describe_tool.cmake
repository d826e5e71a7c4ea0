# SPDX-License-Identifier: MIT
# cmake -DMORLC=COMMAND -DVERSION=... -DMANUAL=man/morlc.1.in -DOUT=DIR -P describe_tool.cmake: has morlc write its
# completions, and the options in its manual page.
function(morl_describe form result)
    execute_process(COMMAND ${MORLC} completion ${form} OUTPUT_VARIABLE text RESULT_VARIABLE status)
    if(status)
        message(FATAL_ERROR "${MORLC} completion ${form}: ${status}")
    endif()
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

foreach(shell IN ITEMS bash zsh fish)
    morl_describe(${shell} script)
    file(WRITE ${OUT}/morlc.${shell} "${script}")
endforeach()
morl_describe(man MORLC_OPTIONS)
set(PROJECT_VERSION ${VERSION})
configure_file(${MANUAL} ${OUT}/morlc.1 @ONLY)
