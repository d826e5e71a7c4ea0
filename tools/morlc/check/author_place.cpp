// SPDX-License-Identifier: MIT
#include "check/author_place.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>
#include <vector>

namespace morlc {
namespace {

constexpr std::string_view kWordCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_$";

/// What the GLSL targets call the types and functions of the language.
constexpr std::pair<std::string_view, std::string_view> kRenamed[] = {
    {"vec2", "float2"},
    {"vec3", "float3"},
    {"vec4", "float4"},
    {"mat3", "float3x3"},
    {"mat4", "float4x4"},
    {"mat2x4", "float2x4"},
    {"mat3x4", "float3x4"},
    {"mat4x3", "float4x3"},
    {"mix", "lerp"},
    {"texture", "tex2D"},
    {"texture2D", "tex2D"},
    {"textureCube", "texCUBE"},
    {"clamp", "saturate"},
    {"texture3D", "tex3D"},
    {"texture1D", "tex1D"},
    {"Sample", "tex2D"},
    {"texture2DProj", "tex2Dproj"}};

/// The part of a source from one statement to its end.
std::string_view StatementAt(std::string_view source, std::size_t start)
{
    const std::size_t lineEnd = std::min(source.find('\n', start), source.size());
    const std::size_t end = source.find_first_of(";{", start);
    return source.substr(start, std::max(lineEnd, std::min(end, source.size())) - start);
}

/// Whether `word` is `name` with a number in place of a macro.
bool IsExpansionOf(std::string_view word, std::string_view name, std::string_view macro)
{
    const std::size_t found = name.find(macro);
    if (macro.empty() || found == std::string_view::npos) {
        return false;
    }
    const std::string_view before = name.substr(0, found);
    const std::string_view after = name.substr(found + macro.size());
    if (word.size() <= before.size() + after.size() || word.substr(0, before.size()) != before ||
        word.substr(word.size() - after.size()) != after) {
        return false;
    }
    const std::string_view number =
        word.substr(before.size(), word.size() - before.size() - after.size());
    return number.find_first_not_of("-0123456789") == std::string_view::npos;
}

bool IsWrittenAs(std::string_view name, std::string_view word,
                 const std::vector<ns_ruke::ReportMacro>& macros)
{
    const auto renamed = std::find_if(
        std::begin(kRenamed), std::end(kRenamed),
        [&](const auto& entry) { return entry.first == word && entry.second == name; });
    return name == word || renamed != std::end(kRenamed) ||
           (word.substr(0, 1) == "i" && word.substr(1) == name) ||
           (word.substr(0, 3) == "ret" && word.substr(3) == name) ||
           std::any_of(macros.begin(), macros.end(), [&](const ns_ruke::ReportMacro& macro) {
               return IsExpansionOf(word, name, macro.name);
           });
}

/// Where the word is in a statement; npos if it is not.
std::size_t FindWord(std::string_view statement, std::string_view word,
                     const std::vector<ns_ruke::ReportMacro>& macros)
{
    if (word.empty()) {
        return std::string_view::npos;
    }
    if (word.find_first_not_of(kWordCharacters) != std::string_view::npos) {
        return statement.find(word);
    }
    for (std::size_t start = statement.find_first_of(kWordCharacters);
         start != std::string_view::npos;) {
        const std::size_t end =
            std::min(statement.find_first_not_of(kWordCharacters, start), statement.size());
        if (IsWrittenAs(statement.substr(start, end - start), word, macros)) {
            return start;
        }
        start = statement.find_first_of(kWordCharacters, end);
    }
    return std::string_view::npos;
}

}  // namespace

AuthorPlace FindAuthorPlace(const ns_ruke::MorlCompiler& compiler,
                            const ns_ruke::PassReport& report, int line, const std::string& word)
{
    const auto index = static_cast<std::size_t>(line) - 1;
    if (line < 1 || index >= report.lines.size() || report.lines[index].node < 0) {
        return {};
    }
    const ns_ruke::ReportLine from = report.lines[index];
    const std::string& node = report.nodes[static_cast<std::size_t>(from.node)];
    const std::string& source = compiler.FindNode(node)->Content();
    const ns_ruke::TextLines lines(source);
    const std::size_t start = lines.Starts()[static_cast<std::size_t>(from.line) - 1];
    const std::size_t found = FindWord(StatementAt(source, start), word, report.macros);
    const std::size_t first = source.find_first_not_of(" \t", start);
    const std::size_t offset = found != std::string::npos ? start + found : first;
    const ns_ruke::TextPlace place = lines.PlaceOf(std::min(offset, source.size()));
    return {node, place.line, place.column};
}

AuthorPlace FindDeclaration(const ns_ruke::PassReport& report, const std::string& text)
{
    for (const auto* list : {&report.inputs, &report.outputs, &report.uniforms}) {
        for (const ns_ruke::ReportDeclare& declare : *list) {
            if (FindWord(text, declare.name, {}) != std::string::npos) {
                return {report.nodes[static_cast<std::size_t>(declare.node)], declare.line,
                        declare.column};
            }
        }
    }
    return {};
}

}  // namespace morlc
