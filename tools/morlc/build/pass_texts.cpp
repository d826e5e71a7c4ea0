// SPDX-License-Identifier: MIT
#include "build/pass_texts.h"

#include <algorithm>
#include <map>

namespace morlc {
namespace {

bool ContinuesName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$';
}

std::string AsText(const std::unordered_map<std::string, std::string>& semantics)
{
    std::string text;
    for (const auto& [name, semantic] : std::map(semantics.begin(), semantics.end())) {
        text.append(name).append("=").append(semantic).append("\n");
    }
    return text;
}

}  // namespace

bool Mentions(const std::string& source, const std::string& name)
{
    for (std::size_t start = source.find(name); start != std::string::npos;
         start = source.find(name, start + 1)) {
        const std::size_t end = start + name.size();
        const bool isWhole = (start == 0 || !ContinuesName(source[start - 1])) &&
                             (end == source.size() || !ContinuesName(source[end]));
        if (isWhole) {
            return true;
        }
    }
    return false;
}

const PassText* PassTexts::Reuse(std::size_t variant, const std::string& key)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto known = byKey.find(key);
    return known != byKey.end() ? Take(variant, *known->second) : nullptr;
}

const PassText* PassTexts::Add(std::size_t variant, const std::string& key, bool mayReuse,
                               ns_ruke::ShaderOutput output, ns_ruke::PassReport report)
{
    const std::lock_guard<std::mutex> lock(mutex);
    auto known = byCode.find(output.code);
    if (known == byCode.end()) {
        // The code determines the rest of the output: it spells every uniform and every semantic.
        PassText& text = texts.emplace_back();
        text.first = variant;
        text.semantics = AsText(output.semantics);
        text.output = std::move(output);
        known = byCode.emplace(text.output.code, &text).first;
    }
    PassText& text = *known->second;
    for (const ns_ruke::ReportMacro& macro : report.macros) {
        text.macros.insert(macro.name);
    }
    // Equal texts may be from different lines. At least one request is made for each key, so the
    // lowest one does not depend on the threads.
    if (text.reportKey.empty() || key < text.reportKey) {
        text.reportKey = key;
        text.report = std::move(report);
    }
    if (mayReuse) {
        byKey.emplace(key, &text);
    }
    return Take(variant, text);
}

const PassText* PassTexts::Take(std::size_t variant, PassText& text)
{
    text.first = std::min(text.first, variant);
    byVariant.emplace_back(variant, &text);
    return &text;
}

std::vector<std::string> MentionedMacros(const ns_ruke::MorlCompiler& compiler,
                                         const std::vector<std::string>& nodes,
                                         const std::vector<MacroRange>& macros)
{
    std::vector<std::string> mentioned;
    for (const MacroRange& macro : macros) {
        const bool isMentioned =
            std::any_of(nodes.begin(), nodes.end(), [&](const std::string& name) {
                const ns_ruke::MorlNode* node = compiler.FindNode(name);
                return node != nullptr && Mentions(node->Content(), macro.name);
            });
        if (isMentioned) {
            mentioned.push_back(macro.name);
        }
    }
    return mentioned;
}

std::string KeyOf(const std::vector<std::string>& mentioned, const MacroValues& values,
                  const std::string& semantics)
{
    std::string key = semantics + "\n";
    for (const std::string& name : mentioned) {
        key.append(std::to_string(values.at(name))).append(",");
    }
    return key;
}

}  // namespace morlc
