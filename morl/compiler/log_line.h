// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/core/log_level.h"

#include <string>

namespace ns_ruke {

class MorlCompiler;

/// A log line split into its parts: the compiler and the node it belongs to, the location in the
/// node's content, and the text. Construct it inside a LogSink, on the logging thread, because node
/// and location are known only there:
///
///     TamberLogSystem::SetSink([](LogLevel level, const std::string&, const std::string& message)
///     {
///         const LogLine log(level, message);
///         if (log.IsError()) {
///             editor.Mark(log.node, log.line, log.column, log.text);
///         }
///     });
class MORL_API LogLine {
public:
    LogLine(LogLevel logLevel, const std::string& message);

    bool IsError() const { return level == LogLevel::Error; }

    /// Whether this is one of the two information lines that surround every parse.
    bool IsParseMark() const;

    LogLevel level;
    const MorlCompiler* compiler;  ///< that is running a request; null: none
    std::string node;              ///< empty: the line belongs to the request as a whole
    int line = 0;                  ///< 1-based line in the node's content; 0: no location
    int column = 0;                ///< 1-based, in bytes; 0: no location
    std::string text;              ///< the message without its location
};

}  // namespace ns_ruke
