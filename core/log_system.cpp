// SPDX-License-Identifier: MIT
#include "morl/core/log_system.h"

#include <algorithm>
#include <cstdio>

namespace ns_ruke {
namespace {

/// The widest field and the most digits of a conversion; larger wishes are cut to it.
constexpr int kMaxFieldWidth = 1024;

/// One conversion of a format: "%", flags, width, precision and letter.
struct Conversion {
    std::string flags;
    int width = 0;
    int precision = -1;
    char letter = '\0';
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
        while (position < format.size()) {
            const std::size_t percent = std::min(format.find('%', position), format.size());
            result.append(format.substr(position, percent - position));
            position = percent;
            if (position < format.size()) {
                WriteConversion();
            }
        }
        return std::move(result);
    }

private:
    void WriteConversion()
    {
        const std::size_t start = position++;
        const Conversion conversion = ReadConversion();
        if (conversion.letter == '%') {
            result += '%';
        } else if (conversion.letter == '\0' || next >= arguments.size()) {
            result.append(format.substr(start, position - start));
        } else {
            WriteArgument(conversion, arguments[next++]);
        }
    }

    Conversion ReadConversion()
    {
        Conversion conversion;
        while (position < format.size() && Contains("-+ #0", format[position])) {
            conversion.flags += format[position++];
        }
        conversion.width = ReadNumber();
        if (conversion.width < 0) {
            conversion.flags += '-';
            conversion.width = -conversion.width;
        }
        if (position < format.size() && format[position] == '.') {
            ++position;
            conversion.precision = ReadNumber();
        }
        while (position < format.size() && Contains("hlLqjzt", format[position])) {
            ++position;
        }
        if (position < format.size()) {
            conversion.letter = format[position++];
        }
        return conversion;
    }

    /// Digits, or "*" for the next argument, which may be negative.
    int ReadNumber()
    {
        if (position < format.size() && format[position] == '*') {
            ++position;
            const bool signedArgument =
                next < arguments.size() && arguments[next].kind == LogArgument::Kind::Signed;
            const std::int64_t value = signedArgument ? arguments[next++].signedValue : 0;
            return static_cast<int>(
                std::clamp<std::int64_t>(value, -kMaxFieldWidth, kMaxFieldWidth));
        }
        int value = 0;
        for (; position < format.size() && format[position] >= '0' && format[position] <= '9';
             ++position) {
            value = std::min(value * 10 + (format[position] - '0'), kMaxFieldWidth);
        }
        return value;
    }

    void WriteArgument(const Conversion& conversion, const LogArgument& argument)
    {
        switch (argument.kind) {
        case LogArgument::Kind::Text:
            WriteText(conversion, argument.text);
            break;
        case LogArgument::Kind::Signed:
        case LogArgument::Kind::Unsigned:
            WriteInteger(conversion, argument);
            break;
        case LogArgument::Kind::Real:
            Print(conversion, "", Contains("fFeEgGaA", conversion.letter) ? conversion.letter : 'g',
                  argument.real);
            break;
        case LogArgument::Kind::Pointer:
            Print(Conversion{"", conversion.width, -1, 'p'}, "", 'p', argument.pointer);
            break;
        }
    }

    void WriteInteger(const Conversion& conversion, const LogArgument& argument)
    {
        const bool isSigned = argument.kind == LogArgument::Kind::Signed;
        if (conversion.letter == 'c') {
            const char character = static_cast<char>(argument.signedValue);
            WriteText(conversion, std::string_view(&character, 1));
        } else if (Contains("uoxX", conversion.letter)) {
            Print(conversion, "ll", conversion.letter,
                  static_cast<unsigned long long>(argument.unsignedValue));
        } else if (isSigned) {
            Print(conversion, "ll", 'd', static_cast<long long>(argument.signedValue));
        } else {
            Print(conversion, "ll", 'u', static_cast<unsigned long long>(argument.unsignedValue));
        }
    }

    void WriteText(const Conversion& conversion, std::string_view text)
    {
        if (conversion.precision >= 0) {
            text = text.substr(0, static_cast<std::size_t>(conversion.precision));
        }
        const auto width = static_cast<std::size_t>(conversion.width);
        const std::string padding(width > text.size() ? width - text.size() : 0, ' ');
        const bool left = Contains(conversion.flags, '-');
        result.append(left ? "" : padding).append(text).append(left ? padding : "");
    }

    template <class Value>
    void Print(const Conversion& conversion, const char* size, char letter, Value value)
    {
        std::string pattern = "%" + conversion.flags + "*";
        if (Contains("du", letter)) {  // for them the alternative form is not defined
            pattern.erase(std::remove(pattern.begin(), pattern.end(), '#'), pattern.end());
        }
        pattern += conversion.precision >= 0 ? "." + std::to_string(conversion.precision) : "";
        pattern.append(size) += letter;
        const int length = Printf(nullptr, 0, pattern, conversion.width, value);
        std::string text(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0');
        Printf(text.data(), text.size(), pattern, conversion.width, value);
        result.append(text, 0, text.size() - 1);
    }

    // The pattern was built by Print from checked parts and suits the value's type.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    template <class Value>
    static int Printf(char* buffer, std::size_t size, const std::string& pattern, int width,
                      Value value)
    {
        return std::snprintf(buffer, size, pattern.c_str(), width, value);
    }
#pragma GCC diagnostic pop

    static bool Contains(std::string_view set, char c)
    {
        return c != '\0' && set.find(c) != std::string_view::npos;
    }

    std::string_view format;
    const std::vector<LogArgument>& arguments;
    std::size_t position = 0;
    std::size_t next = 0;
    std::string result;
};

void WriteToStandardError(LogLevel level, const std::string& category, const std::string& message)
{
    std::string line = level == LogLevel::Error ? "[error] " : "[info] ";
    line.append(category).append(": ").append(message) += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

TamberLogSystem::TamberLogSystem() = default;

template <>
TamberLogSystem* Singleton<TamberLogSystem>::GetSingletonPtr()
{
    static TamberLogSystem* const instance = new TamberLogSystem;
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
