# SPDX-License-Identifier: MIT
# Builds JsonCpp from its source in MORL_JSONCPP_SOURCE, for platforms that have no package of it.
# Its objects become part of both libraries, so that nobody who links them needs JsonCpp.
if(NOT EXISTS ${MORL_JSONCPP_SOURCE}/src/lib_json/json_reader.cpp)
    message(FATAL_ERROR "there is no source of JsonCpp in ${MORL_JSONCPP_SOURCE}")
endif()
add_library(morl_jsoncpp OBJECT
    ${MORL_JSONCPP_SOURCE}/src/lib_json/json_reader.cpp
    ${MORL_JSONCPP_SOURCE}/src/lib_json/json_value.cpp
    ${MORL_JSONCPP_SOURCE}/src/lib_json/json_writer.cpp)
set_target_properties(morl_jsoncpp PROPERTIES POSITION_INDEPENDENT_CODE ON)
target_include_directories(morl_jsoncpp SYSTEM PUBLIC ${MORL_JSONCPP_SOURCE}/include)
add_library(morl_jsoncpp_archive STATIC $<TARGET_OBJECTS:morl_jsoncpp>)
target_include_directories(morl_jsoncpp_archive SYSTEM PUBLIC ${MORL_JSONCPP_SOURCE}/include)
add_library(morl::jsoncpp ALIAS morl_jsoncpp_archive)
