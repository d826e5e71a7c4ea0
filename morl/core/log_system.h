// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/core/log_level.h"
#include "morl/core/singleton.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace ns_ruke {

/// Receives every log message of the process.
/// @param message the finished text: one line, without a trailing line break.
using LogSink =
    std::function<void(LogLevel level, const std::string& category, const std::string& message)>;

/// One argument of a log call, with the type that it has after the default promotions of a variadic
/// call. Texts and pointers belong to the caller and need only live during the call.
using LogArgument = std::variant<int, unsigned, long long, unsigned long long, double, long double,
                                 const char*, std::string_view, const void*>;

/// The address that a pointer to an object or a function holds.
template <class Value>
const void* AsPointer(Value* value)
{
    if constexpr (std::is_function_v<Value>) {
        return reinterpret_cast<const void*>(value);
    } else {
        return const_cast<const void*>(static_cast<const volatile void*>(value));
    }
}

/// Converts a value to a log argument.
template <class Value>
LogArgument MakeLogArgument(const Value& value)
{
    if constexpr (std::is_enum_v<Value>) {
        return MakeLogArgument(static_cast<std::underlying_type_t<Value>>(value));
    } else if constexpr (std::is_same_v<Value, long double>) {
        return value;
    } else if constexpr (std::is_floating_point_v<Value>) {
        return static_cast<double>(value);
    } else if constexpr (std::is_integral_v<Value>) {
        using Promoted = decltype(+value);
        using Long = std::conditional_t<std::is_signed_v<Promoted>, long long, unsigned long long>;
        using Stored = std::conditional_t<sizeof(Promoted) == sizeof(int), Promoted, Long>;
        return static_cast<Stored>(value);
    } else if constexpr (std::is_convertible_v<Value, const char*>) {
        return static_cast<const char*>(value);
    } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
        return std::string_view(value);
    } else if constexpr (std::is_pointer_v<Value>) {
        return AsPointer(value);
    } else {
        static_assert(std::is_null_pointer_v<Value>, "values of this type cannot be logged");
        return static_cast<const void*>(nullptr);
    }
}

/// The process-wide log. Messages of concurrent threads reach the sink one at a time and whole.
class MORL_API TamberLogSystem {
public:
    /// Makes sure that the log system exists. Cheap, and harmless when called again.
    static void LogInitialize();

    /// Installs a sink and returns the previous one. An empty sink stands for the default, which
    /// writes lines like "[error] CATEGORY: node 'NAME': MESSAGE" to standard error, without the
    /// information lines that surround every parse. A sink runs on the logging thread while other
    /// loggers wait. It may log and may set another sink, but must not wait for another thread that
    /// logs.
    ///
    /// A process may fork at any time: a fork waits for the sink, and the child can log at once.
    static LogSink SetSink(LogSink sink);

    /// Writes an information message. Without further arguments, `format` is the message itself,
    /// verbatim ("%" and NUL included). With further arguments, it is a printf format that applies
    /// to them in order. If a conversion does not suit its argument, the argument is written in its
    /// natural form; a conversion without an argument is copied unchanged. Arguments may be strings
    /// and whatever a variadic C function accepts (numbers, enumerations, texts, pointers,
    /// nullptr).
    template <class... Arguments>
    void LogInfo(std::string category, std::string format, Arguments... arguments)
    {
        Write(LogLevel::Info, category, Finish(std::move(format), arguments...));
    }

    /// Writes an error message; the parameters are those of LogInfo.
    template <class... Arguments>
    void LogError(std::string category, std::string format, Arguments... arguments)
    {
        Write(LogLevel::Error, category, Finish(std::move(format), arguments...));
    }

    /// Writes a finished message, without copying it.
    void Write(LogLevel level, const std::string& category, const std::string& message);

private:
    friend class Singleton<TamberLogSystem>;

    TamberLogSystem();

    static void BeforeFork();
    static void AfterForkInParent();
    static void AfterForkInChild();

    template <class... Arguments>
    static std::string Finish(std::string format, const Arguments&... arguments)
    {
        if constexpr (sizeof...(arguments) == 0) {
            return format;
        } else {
            return Format(format, {MakeLogArgument(arguments)...});
        }
    }

    static std::string Format(std::string_view format, const std::vector<LogArgument>& arguments);

    std::recursive_mutex mutex;  ///< recursive: a sink may log
    std::shared_ptr<LogSink>
        sink;  ///< null: the default. Shared, so that a sink may replace itself
};

/// The instance lives in the library, even if the caller is in another module.
template <>
MORL_API TamberLogSystem* Singleton<TamberLogSystem>::GetSingletonPtr();

}  // namespace ns_ruke
