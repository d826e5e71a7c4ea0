# SPDX-License-Identifier: MIT
# Defines morl_glslang if glslang (12 or later) is installed. Its own CMake package says which of its
# libraries there are; without that package, those that are found are linked.
find_package(glslang CONFIG QUIET)
find_path(MORL_GLSLANG_INCLUDE glslang/Public/ShaderLang.h)
mark_as_advanced(MORL_GLSLANG_INCLUDE)
set(libraries "")
if(TARGET glslang::glslang)
    set(libraries glslang::glslang)
    if(TARGET glslang::glslang-default-resource-limits)
        list(APPEND libraries glslang::glslang-default-resource-limits)
    endif()
else()
    # HLSL and OGLCompiler have become parts of the others in 14.
    foreach(name IN ITEMS glslang HLSL MachineIndependent GenericCodeGen OGLCompiler OSDependent
            glslang-default-resource-limits)
        find_library(MORL_GLSLANG_${name} ${name})
        mark_as_advanced(MORL_GLSLANG_${name})
        if(MORL_GLSLANG_${name})
            list(APPEND libraries ${MORL_GLSLANG_${name}})
        endif()
    endforeach()
endif()
if(MORL_GLSLANG_INCLUDE AND libraries)
    add_library(morl_glslang INTERFACE)
    target_include_directories(morl_glslang SYSTEM INTERFACE ${MORL_GLSLANG_INCLUDE})
    target_link_libraries(morl_glslang INTERFACE ${libraries})
endif()
