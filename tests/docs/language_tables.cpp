// SPDX-License-Identifier: MIT
#include "docs/language_tables.h"

#include "support/document.h"
#include "support/graph.h"

#include <morl/morl.h>
#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace morl_test {
namespace {

using namespace ns_ruke;

std::string Code(const std::string& text)
{
    return text.empty() ? "–" : "`" + text + "`";
}

std::string Head(const std::string& what, const std::vector<std::string>& targets)
{
    std::string head = "| " + what + " |";
    std::string line = "|---|";
    for (const std::string& target : targets) {
        head += " `" + target + "` |";
        line += "---|";
    }
    return head + "\n" + line + "\n";
}

/// The back ends of all targets, each after writing an empty vertex pass, because some of their
/// results depend on the stage.
std::vector<std::unique_ptr<MorlTranslator>> BackEnds(MorlProgram& program)
{
    std::vector<std::unique_ptr<MorlTranslator>> backEnds;
    for (const std::string& target : MorlTargets()) {
        backEnds.push_back(MakeTranslator(target));
    }
    program.stage = kVertexStage;
    std::unordered_map<std::string, std::string> semantics;
    std::unordered_map<std::string, int> registers;
    for (const auto& backEnd : backEnds) {
        ShaderOutput output;
        backEnd->WriteProgram(&program, semantics, registers, output);
    }
    return backEnds;
}

std::string TypeTable()
{
    MorlProgram program;
    const auto backEnds = BackEnds(program);
    std::string table = Head("type", MorlTargets());
    for (const Keyword& keyword : KeywordMap::Keywords()) {
        if (keyword.wordClass != WordClass::Type || !keyword.type.IsKnown()) {
            continue;
        }
        std::vector<std::string> cells = {Code(std::string(keyword.spelling))};
        for (const auto& backEnd : backEnds) {
            cells.push_back(Code(backEnd->WriteVariableType(keyword.token)));
        }
        table += TableRow(cells);
    }
    return table;
}

/// What the targets that write bindings write for each semantic.
std::string SemanticTable()
{
    std::vector<std::string> targets;
    std::vector<std::unique_ptr<MorlTranslator>> backEnds;
    for (const std::string& target : MorlTargets()) {
        if (CompileSource("in float a : NORMAL;", target, 0).find(" : ") != std::string::npos) {
            targets.push_back(target);
            backEnds.push_back(MakeTranslator(target));
        }
    }
    std::string table = Head("semantic", targets);
    for (const Keyword& keyword : KeywordMap::Keywords()) {
        if (keyword.wordClass != WordClass::Semantic || keyword.token == TOKEN_TEXAUTO ||
            keyword.token == TOKEN_SAUTO) {
            continue;
        }
        MorlRegister binding;
        binding.registerToken = keyword.token;
        binding.name = keyword.spelling;
        MorlDeclare declare;
        std::vector<std::string> cells = {Code(std::string(keyword.spelling))};
        for (const auto& backEnd : backEnds) {
            cells.push_back(Code(backEnd->WriteRegister(&declare, &binding).substr(3)));
        }
        table += TableRow(cells);
    }
    return table;
}

/// How a function is called, by what it takes.
std::string SampleCall(const Keyword& keyword)
{
    std::string call(keyword.spelling);
    const char* separator = "(";
    char name = 'a';
    for (const char kind : keyword.arguments) {
        const std::string argument = kind == 's'   ? "map"
                                     : kind == 't' ? "uv"
                                                   : std::string(1, name++);
        call += std::exchange(separator, ", ") + argument;
    }
    return call + ")";
}

/// What a target writes for a call.
std::string Written(const std::string& call, const std::string& target)
{
    const std::string code = CompileSource("void main() { x = " + call + "; }", target, 1);
    const std::string start = "\tx = ";
    const std::size_t begin = code.find(start) + start.size();
    return code.substr(begin, code.find(";\n", begin) - begin);
}

std::string IntrinsicTable()
{
    std::string table = Head("call", MorlTargets());
    for (const Keyword& keyword : KeywordMap::Keywords()) {
        if (keyword.wordClass != WordClass::Function) {
            continue;
        }
        const std::string call = SampleCall(keyword);
        std::vector<std::string> cells = {Code(call)};
        for (const std::string& target : MorlTargets()) {
            cells.push_back(Code(Written(call, target)));
        }
        table += TableRow(cells);
    }
    return table;
}

}  // namespace

std::string WithLanguageTables(const std::string& document)
{
    std::string replaced = document;
    ReplaceTable(replaced, "types", TypeTable());
    ReplaceTable(replaced, "semantics", SemanticTable());
    ReplaceTable(replaced, "intrinsics", IntrinsicTable());
    return replaced;
}

std::string WithWordLists(const std::string& grammar)
{
    const std::pair<const char*, std::vector<WordClass>> lists[] = {
        {"storage.modifier.morl", {WordClass::Buffer}},
        {"storage.type.morl", {WordClass::Void, WordClass::Type}},
        {"constant.language.semantic.morl", {WordClass::Semantic}},
        {"keyword.control.morl", {WordClass::Control, WordClass::Special}},
        {"keyword.control.directive.morl", {WordClass::Directive}},
        {"support.function.morl", {WordClass::Function}},
    };
    std::string result = grammar;
    for (const auto& [scope, classes] : lists) {
        std::string words;
        for (const Keyword& keyword : KeywordMap::Keywords()) {
            const bool isListed =
                std::find(classes.begin(), classes.end(), keyword.wordClass) != classes.end();
            if (isListed && keyword.token != TOKEN_WHILE) {
                words += (words.empty() ? "" : "|") + std::string(keyword.spelling);
            }
        }
        const std::string start = "|(?<=\\\\\\\\r))(?:";
        const std::size_t rule =
            result.find("\"" + std::string(scope) + "\",\n          \"match\": ");
        const std::size_t begin = result.find(start, rule) + start.size();
        result.replace(begin, result.find(")(?![A-Za-z", begin) - begin, words);
    }
    return result;
}

std::string TargetList()
{
    std::string list;
    for (const std::string& target : MorlTargets()) {
        list += (list.empty() ? "\"" : ", \"") + target + "\"";
    }
    return "// SPDX-License-Identifier: MIT\n// Written by \"./dev golden\".\n\n"
           "/** The target languages, in a fixed order. */\n"
           "export const targets = [" +
           list + "] as const;\n";
}

std::string WithCheckTable(const std::string& document)
{
    std::string table = TableRow({"group", "check", "what it says", "targets"}) +
                        TableRow({"---", "---", "---", "---"});
    for (const ns_ruke::CheckInfo& check : ns_ruke::MorlChecks()) {
        const std::string text =
            ns_ruke::StringHelper::ReplaceAll(std::string(check.text), "{}", "NAME");
        const std::string& targets = check.targets;
        table += TableRow({std::string(check.group), "`" + std::string(check.name) + "`", text,
                           targets.empty() ? "all" : targets});
    }
    std::string result = document;
    ReplaceTable(result, "checks", table);
    return result;
}

}  // namespace morl_test
