// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/core/singleton.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace ns_ruke {

/// The level of a log message.
enum class LogLevel { Info, Error };

/// Receives every log message of the process.
/// @param message the finished text: one line, without a trailing line break.
using LogSink =
    std::function<void(LogLevel level, const std::string& category, const std::string& message)>;

/// One further argument of a log call, kept with its type so that formatting can never misread it.
class MORL_API LogArgument {
public:
    /// How the argument is stored. Conversions take what they can and never reinterpret the rest.
    enum class Kind { Signed, Unsigned, Real, Text, Pointer };

    LogArgument(std::string_view value) : kind(Kind::Text), text(value) {}
    LogArgument(const std::string& value) : LogArgument(std::string_view(value)) {}
    LogArgument(const char* value)
        : LogArgument(std::string_view(value != nullptr ? value : "(null)"))
    {
    }
    LogArgument(const void* value) : kind(Kind::Pointer), pointer(value) {}

    template <class Enum, std::enable_if_t<std::is_enum_v<Enum>, int> = 0>
    LogArgument(Enum value) : LogArgument(static_cast<std::underlying_type_t<Enum>>(value))
    {
    }

    template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
    LogArgument(Number number)
    {
        if constexpr (std::is_floating_point_v<Number>) {
            kind = Kind::Real;
            real = static_cast<double>(number);
        } else if constexpr (std::is_signed_v<Number>) {
            kind = Kind::Signed;
            signedValue = static_cast<std::int64_t>(number);  // NOLINT(bugprone-signed-char-misuse)
            unsignedValue = static_cast<std::make_unsigned_t<Number>>(number);
        } else {
            kind = Kind::Unsigned;
            signedValue = static_cast<std::int64_t>(number);
            unsignedValue = number;
        }
    }

    Kind kind = Kind::Signed;
    std::int64_t signedValue = 0;     ///< of both integer kinds
    std::uint64_t unsignedValue = 0;  ///< of both: the same bits, in the argument's own width
    double real = 0.0;
    std::string_view text;  ///< refers to the caller's text; valid during the log call only
    const void* pointer = nullptr;
};

/// The process-wide log. Messages of concurrent threads reach the sink one at a time and whole.
class MORL_API TamberLogSystem {
public:
    /// Makes sure that the log system exists. Cheap, and harmless when called again.
    static void LogInitialize();

    /// Puts a sink in place of the one in force and returns that one. An empty sink restores the
    /// default, which writes "[error] CATEGORY: MESSAGE" lines to standard error; it is itself
    /// represented by an empty sink. A sink runs on the logging thread, while other loggers wait;
    /// it may log and may set another sink. It must not wait for another thread that logs.
    static LogSink SetSink(LogSink sink);

    /// Writes an information message. Without further arguments `format` is the message, verbatim
    /// ("%" and NUL included); with further arguments it takes the conversions of printf, applied
    /// to them in order. A conversion that does not suit its argument writes the argument in its
    /// natural form, and one that has no argument is written as it stands.
    template <class... Arguments>
    void LogInfo(std::string category, std::string format, const Arguments&... arguments)
    {
        Write(LogLevel::Info, category, Finish(std::move(format), arguments...));
    }

    /// Writes an error message; otherwise as LogInfo.
    template <class... Arguments>
    void LogError(std::string category, std::string format, const Arguments&... arguments)
    {
        Write(LogLevel::Error, category, Finish(std::move(format), arguments...));
    }

private:
    friend class Singleton<TamberLogSystem>;

    TamberLogSystem();

    template <class... Arguments>
    static std::string Finish(std::string format, const Arguments&... arguments)
    {
        if constexpr (sizeof...(arguments) == 0) {
            return format;
        } else {
            return Format(format, {LogArgument(arguments)...});
        }
    }

    static std::string Format(std::string_view format, const std::vector<LogArgument>& arguments);
    void Write(LogLevel level, const std::string& category, const std::string& message);

    std::recursive_mutex mutex;  ///< recursive: a sink may log
    std::shared_ptr<LogSink>
        sink;  ///< null: the default. Shared, so that a sink may replace itself
};

/// The library holds the instance, also when the caller is in another module.
template <>
MORL_API TamberLogSystem* Singleton<TamberLogSystem>::GetSingletonPtr();

}  // namespace ns_ruke
