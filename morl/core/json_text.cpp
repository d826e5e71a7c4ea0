// SPDX-License-Identifier: MIT
#include "morl/core/json_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <sstream>

namespace ns_ruke {
namespace {

/// Where the string or comment that starts at `start` ends: one past its last character.
std::size_t EndOfString(const std::string& text, std::size_t start)
{
    std::size_t end = start + 1;
    while (end < text.size() && text[end] != '"') {
        end += text[end] == '\\' ? 2 : 1;
    }
    return std::min(end + 1, text.size());
}

std::size_t EndOfComment(const std::string& text, std::size_t start)
{
    const bool block = text[start + 1] == '*';
    const std::size_t end =
        block ? text.find("*/", start + 2) : text.find_first_of("\r\n", start + 2);
    return end == std::string::npos ? text.size() : end + (block ? 2 : 0);
}

/// Line breaks stay, so that line numbers remain correct.
void Blank(std::string& text, std::size_t start, std::size_t end)
{
    for (std::size_t i = start; i < end; ++i) {
        if (text[i] != '\n') {
            text[i] = ' ';
        }
    }
}

/// Puts a message, which may span several lines, on one line.
std::string OnOneLine(const std::string& message)
{
    std::istringstream words(message);
    std::string line;
    for (std::string word; words >> word;) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

}  // namespace

// A message is "* Line 3, Column 5", then the text, up to the next such line.
JsonFault FirstJsonFault(const std::string& messages)
{
    std::istringstream stream(messages);
    std::string word;
    char comma = '\0';
    TextPlace place;
    if (stream >> word >> word >> place.line >> comma >> word >> place.column) {
        const std::string rest(std::istreambuf_iterator<char>(stream), {});
        return {place, OnOneLine(rest.substr(0, rest.find("\n*")))};
    }
    return {{}, OnOneLine(messages)};
}

void RemoveComments(std::string& text)
{
    std::size_t position = text.find_first_of("\"/");
    while (position != std::string::npos) {
        const char next = position + 1 < text.size() ? text[position + 1] : '\0';
        if (text[position] == '"') {
            position = EndOfString(text, position);
        } else if (next == '/' || next == '*') {
            const std::size_t end = EndOfComment(text, position);
            Blank(text, position, end);
            position = end;
        } else {
            ++position;
        }
        position = text.find_first_of("\"/", position);
    }
}

}  // namespace ns_ruke
