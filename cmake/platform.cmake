# SPDX-License-Identifier: MIT
# What differs between platforms. The defaults of compilers and linkers do elsewhere.

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

# The fastest access to a thread's own data that a library can have. Android's loader has no room for
# it, and other formats have no such models.
set(MORL_TLS_OPTION "")
if(MORL_IS_ELF AND NOT ANDROID)
    set(MORL_TLS_OPTION -ftls-model=initial-exec)
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
