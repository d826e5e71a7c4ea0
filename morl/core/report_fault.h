// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/log_level.h"

#include <string>

namespace ns_ruke {

/// A fault, in the parts that its log message is made of.
struct ReportFault {
    LogLevel level = LogLevel::Error;
    std::string node;  ///< empty: the request as a whole
    int line = 0;      ///< 1-based, in the node's content; 0: no place
    int column = 0;    ///< 1-based, in bytes; 0: no place
    std::string text;  ///< the message without its place
    std::string hint;  ///< what to write instead, or what may have gone wrong; empty: not known
};

}  // namespace ns_ruke
