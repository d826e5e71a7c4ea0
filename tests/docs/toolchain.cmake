# SPDX-License-Identifier: MIT
# For builds that the documents describe: with the flags of the presets, so that the compiler cache of ./dev
# has their files already.
set(CMAKE_COMPILE_WARNING_AS_ERROR ON CACHE BOOL "")
