# SPDX-License-Identifier: MIT
# For builds that the documents tell of and the tests only want to see succeed: without optimisation
# they take half the time.
set(CMAKE_CXX_FLAGS_RELEASE "-O0" CACHE STRING "")
