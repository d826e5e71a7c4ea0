// SPDX-License-Identifier: MIT
#include "morl/core/log_system.h"

#include "morl/core/internal/platform_fork.h"
#include "morl/core/log_scope.h"
#include "morl/core/messages.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <new>

namespace ns_ruke {
namespace {

/// The largest width and precision of a conversion; larger values are reduced to it.
constexpr int kMaxField = 1024;

/// One conversion of a format: "%", flags, width, precision, size and letter.
struct Conversion {
    std::string flags;
    int width = 0;
    int precision = -1;
    std::string size;  ///< "h" or "hh"; the others follow from the argument
    char letter = '\0';
};

bool Contains(std::string_view set, char c)
{
    return c != '\0' && set.find(c) != std::string_view::npos;
}

// The pattern is built here from checked parts and suits the value's type.
template <class Value>
std::string Print(const Conversion& conversion, const std::string& size, char letter, Value value)
{
    // Not every flag is defined for every letter.
    const std::string_view undefined = Contains("csp", letter)   ? "#0"
                                       : Contains("diu", letter) ? "#"
                                                                 : "";
    std::string pattern = "%";
    std::copy_if(conversion.flags.begin(), conversion.flags.end(), std::back_inserter(pattern),
                 [&](char flag) { return !Contains(undefined, flag); });
    pattern.append("*.*").append(size) += letter;
    const int length =
        std::snprintf(nullptr, 0, pattern.c_str(), conversion.width, conversion.precision, value);
    std::string text(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0');
    std::snprintf(text.data(), text.size(), pattern.c_str(), conversion.width, conversion.precision,
                  value);
    text.pop_back();
    return text;
}

/// Writes an argument with the given conversion if that suits its type, and otherwise with the
/// default conversion of its type.
struct ArgumentWriter {
    std::string operator()(int value) const { return Integer(conversion.size, 'd', value); }
    std::string operator()(unsigned value) const { return Integer(conversion.size, 'u', value); }
    std::string operator()(long long value) const { return Integer("ll", 'd', value); }
    std::string operator()(unsigned long long value) const { return Integer("ll", 'u', value); }
    std::string operator()(double value) const { return Print(conversion, "", Real(), value); }
    std::string operator()(long double value) const
    {
        return Print(conversion, "L", Real(), value);
    }
    std::string operator()(const char* value) const
    {
        if (conversion.letter == 'p') {  // may not point to a text
            return operator()(static_cast<const void*>(value));
        }
        return Print(conversion, "", 's', value != nullptr ? value : "(null)");
    }
    std::string operator()(std::string_view value) const
    {
        return Print(conversion, "", 's', std::string(value).c_str());
    }
    std::string operator()(const void* value) const
    {
        return Print({"", conversion.width, -1, "", 'p'}, "", 'p', value);
    }

    template <class Value>
    std::string Integer(const std::string& size, char natural, Value value) const
    {
        if (conversion.letter == 'c') {
            return Print({conversion.flags, conversion.width, -1, "", 'c'}, "", 'c',
                         static_cast<int>(value));
        }
        const bool suits = Contains("diuoxX", conversion.letter);
        return Print(conversion, size, suits ? conversion.letter : natural, value);
    }

    char Real() const { return Contains("fFeEgGaA", conversion.letter) ? conversion.letter : 'g'; }

    const Conversion& conversion;
};

/// Reads conversions of a format and hands out its arguments in order.
class Formatter {
public:
    Formatter(std::string_view pattern, const std::vector<LogArgument>& values)
        : format(pattern), arguments(values)
    {
    }

    std::string Run()
    {
        std::string result;
        while (position < format.size()) {
            const std::size_t percent = std::min(format.find('%', position), format.size());
            result.append(format.substr(position, percent - position));
            position = percent;
            if (position == format.size()) {
                break;
            }
            const Conversion conversion = ReadConversion();
            if (conversion.letter == '%') {
                result += '%';
            } else if (conversion.letter == '\0' || next >= arguments.size()) {
                result.append(format.substr(percent, position - percent));
            } else {
                result += std::visit(ArgumentWriter{conversion}, arguments[next++]);
            }
        }
        return result;
    }

private:
    Conversion ReadConversion()
    {
        ++position;
        Conversion conversion;
        conversion.flags = ReadSet("-+ #0");
        conversion.width = ReadNumber();
        if (Current() == '.') {
            ++position;
            conversion.precision = ReadNumber();
        }
        const std::string size = ReadSet("hlLqjzt");
        conversion.size = size == "h" || size == "hh" ? size : "";
        if (position < format.size()) {
            conversion.letter = format[position++];
        }
        return conversion;
    }

    char Current() const { return position < format.size() ? format[position] : '\0'; }

    std::string ReadSet(std::string_view set)
    {
        const std::size_t start = position;
        while (Contains(set, Current())) {
            ++position;
        }
        return std::string(format.substr(start, position - start));
    }

    /// Digits, or "*" for the next argument, which may be negative.
    int ReadNumber()
    {
        if (Current() == '*') {
            ++position;
            const bool isNumber =
                next < arguments.size() && std::holds_alternative<int>(arguments[next]);
            return isNumber ? std::clamp(std::get<int>(arguments[next++]), -kMaxField, kMaxField)
                            : 0;
        }
        int value = 0;
        for (; Contains("0123456789", Current()); ++position) {
            value = std::min(value * 10 + (Current() - '0'), kMaxField);
        }
        return value;
    }

    std::string_view format;
    const std::vector<LogArgument>& arguments;
    std::size_t position = 0;
    std::size_t next = 0;
};

void WriteToStandardError(LogLevel level, const std::string& category, const std::string& message)
{
    if (level == LogLevel::Info && messages::IsParseMark(message)) {
        return;
    }
    std::string line = level == LogLevel::Error ? "[error] " : "[info] ";
    line.append(category).append(": ");
    const std::string node = LogScope::CurrentNode();
    if (!node.empty()) {
        line.append("node '").append(node).append("': ");
    }
    line.append(message) += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

TamberLogSystem::TamberLogSystem()
{
    CallAtFork(BeforeFork, AfterForkInParent, AfterForkInChild);
}

void TamberLogSystem::BeforeFork()
{
    Singleton<TamberLogSystem>::GetSingletonPtr()->mutex.lock();
}

void TamberLogSystem::AfterForkInParent()
{
    Singleton<TamberLogSystem>::GetSingletonPtr()->mutex.unlock();
}

// A recursive mutex knows its owner by a number that the child's thread does not have.
void TamberLogSystem::AfterForkInChild()
{
    ::new (&Singleton<TamberLogSystem>::GetSingletonPtr()->mutex) std::recursive_mutex;
}

template <>
TamberLogSystem* Singleton<TamberLogSystem>::GetSingletonPtr()
{
    // Never destroyed, and in no allocation that would be lost with an unloaded plug-in.
    alignas(TamberLogSystem) static unsigned char storage[sizeof(TamberLogSystem)];
    static TamberLogSystem* const instance = ::new (storage) TamberLogSystem;
    return instance;
}

void TamberLogSystem::LogInitialize()
{
    Singleton<TamberLogSystem>::GetSingletonPtr();
}

LogSink TamberLogSystem::SetSink(LogSink sink)
{
    auto next = sink ? std::make_shared<LogSink>(std::move(sink)) : nullptr;
    TamberLogSystem* const log = Singleton<TamberLogSystem>::GetSingletonPtr();
    const std::lock_guard<std::recursive_mutex> lock(log->mutex);
    LogSink previous = log->sink ? *log->sink : LogSink();
    log->sink = std::move(next);
    return previous;
}

std::string TamberLogSystem::Format(std::string_view format,
                                    const std::vector<LogArgument>& arguments)
{
    return Formatter(format, arguments).Run();
}

void TamberLogSystem::Write(LogLevel level, const std::string& category, const std::string& message)
{
    const std::lock_guard<std::recursive_mutex> lock(mutex);
    const std::shared_ptr<LogSink> current = sink;
    if (current) {
        (*current)(level, category, message);
    } else {
        WriteToStandardError(level, category, message);
    }
}

}  // namespace ns_ruke
