# SPDX-License-Identifier: MIT
# Defines morl::jsoncpp if JsonCpp is installed. Looks for its files, because in some versions its
# own CMake package can be included only once in a project; this file can be included any number of
# times.
if(NOT TARGET morl::jsoncpp)
    find_path(MORL_JSONCPP_INCLUDE json/json.h PATH_SUFFIXES jsoncpp)
    find_library(MORL_JSONCPP_LIBRARY jsoncpp)
    mark_as_advanced(MORL_JSONCPP_INCLUDE MORL_JSONCPP_LIBRARY)
    if(MORL_JSONCPP_INCLUDE AND MORL_JSONCPP_LIBRARY)
        add_library(morl::jsoncpp UNKNOWN IMPORTED)
        set_target_properties(morl::jsoncpp PROPERTIES
            IMPORTED_LOCATION "${MORL_JSONCPP_LIBRARY}"
            INTERFACE_INCLUDE_DIRECTORIES "${MORL_JSONCPP_INCLUDE}")
    endif()
endif()
