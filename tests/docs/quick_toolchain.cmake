# SPDX-License-Identifier: MIT
# For builds that the documents describe and that only need to succeed in tests: without
# optimisation they take half the time.
set(CMAKE_CXX_FLAGS_RELEASE "-O0" CACHE STRING "")
