// SPDX-License-Identifier: MIT
#include "morl/core/string_helper.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string_view>

namespace ns_ruke {
namespace {

char LowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

template <class Integer>
std::string Digits(Integer value, unsigned char base)
{
    if (base < 2 || base > 36) {
        return {};
    }
    // In base 2 a negative value takes one digit more than a positive one, and a sign.
    std::array<char, std::numeric_limits<Integer>::digits + 2> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, base).ptr;
    return {digits.data(), end};
}

}  // namespace

bool StringHelper::StartWith(const std::string& text, const std::string& prefix, bool ignoreCase)
{
    if (text.size() < prefix.size()) {
        return false;
    }
    return std::equal(prefix.begin(), prefix.end(), text.begin(), [ignoreCase](char a, char b) {
        return a == b || (ignoreCase && LowerCase(a) == LowerCase(b));
    });
}

std::string StringHelper::ConvertToString(unsigned int value, unsigned char base)
{
    return Digits(value, base);
}

std::string StringHelper::ConvertToString(int value, unsigned char base)
{
    return Digits(value, base);
}

std::vector<std::string> StringHelper::Split(const std::string& text, const std::string& separator,
                                             bool dropEmpty)
{
    std::vector<std::string> pieces;
    const std::string_view whole = text;
    std::size_t start = 0;
    for (;;) {
        const std::size_t end =
            separator.empty() ? std::string_view::npos : whole.find(separator, start);
        const std::string_view piece = whole.substr(start, end - start);
        if (!piece.empty() || !dropEmpty) {
            pieces.emplace_back(piece);
        }
        if (end == std::string_view::npos) {
            return pieces;
        }
        start = end + separator.size();
    }
}

std::string StringHelper::ReplaceAll(const std::string& text, const std::string& from,
                                     const std::string& to)
{
    std::size_t found = from.empty() ? std::string::npos : text.find(from);
    if (found == std::string::npos) {
        return text;
    }
    std::string result;
    result.reserve(text.size());
    std::size_t start = 0;
    for (; found != std::string::npos; found = text.find(from, start)) {
        result.append(text, start, found - start).append(to);
        start = found + from.size();
    }
    result.append(text, start);
    return result;
}

int StringHelper::ConvertToInt32(const std::string& text)
{
    const bool negative = !text.empty() && text.front() == '-';
    const bool plus = !text.empty() && text.front() == '+';
    const char* const first = text.data() + (plus ? 1 : 0);
    if (plus && text.size() > 1 && text[1] == '-') {
        return 0;
    }
    int value = 0;
    const auto result = std::from_chars(first, text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return negative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
    return value;
}

}  // namespace ns_ruke
