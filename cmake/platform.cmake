# SPDX-License-Identifier: MIT
# What differs between platforms. The defaults of compilers and linkers do elsewhere.
include(CheckCXXCompilerFlag)

# Libraries in ELF: names are bound when the library is linked, and the version script hides the
# standard-library templates that were instantiated for the exported classes.
set(MORL_IS_ELF OFF)
if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
    set(MORL_IS_ELF ON)
endif()

# A DLL exports what is marked for it, so the objects of the DLL cannot be those of the static
# library.
set(MORL_IS_DLL OFF)
if(WIN32 AND BUILD_SHARED_LIBS)
    set(MORL_IS_DLL ON)
endif()

# How a thread's own data is reached. The shared library, of which a process has one, takes some of
# the little room that the loader has for the fastest way; Android's has none. Any number of plug-ins
# may contain the static library, so it uses descriptors: they cost a plug-in 2% of a request, and a
# program nothing.
set(MORL_SHARED_TLS "")
set(MORL_STATIC_TLS "")
if(MORL_IS_ELF AND NOT ANDROID)
    set(MORL_SHARED_TLS -ftls-model=initial-exec)
    check_cxx_compiler_flag(-mtls-dialect=gnu2 MORL_HAS_TLS_DESCRIPTORS)
    if(MORL_HAS_TLS_DESCRIPTORS)
        set(MORL_STATIC_TLS -mtls-dialect=gnu2)
    endif()
endif()

if(MSVC)
    set(MORL_WARNINGS /W4 /permissive-)
else()
    set(MORL_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
endif()

# What distributions build with, where it costs next to nothing. The sanitizers have checks of their
# own.
set(MORL_HARDENING "")
set(MORL_HARDENING_LINK "")
if(MORL_IS_ELF AND NOT MORL_SANITIZE)
    set(MORL_HARDENING
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=2>)
    set(MORL_HARDENING_LINK -Wl,-z,relro,-z,now)
endif()
