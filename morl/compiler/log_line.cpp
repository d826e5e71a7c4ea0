// SPDX-License-Identifier: MIT
#include "morl/compiler/log_line.h"

#include "morl/core/log_scope.h"
#include "morl/core/messages.h"

#include <charconv>
#include <string_view>
#include <utility>

namespace ns_ruke {
namespace {

/// Reads `prefix` and a number from the start of `text`, and removes them.
bool TakeNumber(std::string_view& text, std::string_view prefix, int& number)
{
    if (text.substr(0, prefix.size()) != prefix) {
        return false;
    }
    text.remove_prefix(prefix.size());
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return result.ec == std::errc();
}

}  // namespace

LogLine::LogLine(LogLevel logLevel, const std::string& message)
    : LogLine(logLevel, message, LogScope::CurrentNode())
{
}

LogLine::LogLine(LogLevel logLevel, const std::string& message, std::string nodeName)
    : level(logLevel), node(std::move(nodeName)), text(message)
{
    constexpr std::string_view kEnd = messages::kLocationEnd;
    std::string_view rest = message;
    int readLine = 0;
    int readColumn = 0;
    if (TakeNumber(rest, messages::kLocationLine, readLine) &&
        TakeNumber(rest, messages::kLocationColumn, readColumn) &&
        rest.substr(0, kEnd.size()) == kEnd) {
        line = readLine;
        column = readColumn;
        text = rest.substr(kEnd.size());
    }
}

bool LogLine::IsParseMark() const
{
    return level == LogLevel::Info &&
           (text == messages::kCompilerStart || text == messages::kCompilerEnd);
}

}  // namespace ns_ruke
