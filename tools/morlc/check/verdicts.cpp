// SPDX-License-Identifier: MIT
#include "check/verdicts.h"

#include "json_file.h"
#include "parallel.h"
#include "platform.h"
#include "progress.h"

#include <morl/morl.h>
#include <algorithm>
#include <optional>

namespace morlc {
namespace {

/// Longer texts are not judged, in bytes: no shader is a hundredth of this, and a compiler takes
/// more time and memory than anything else in this tool.
constexpr std::size_t kLongest = std::size_t{4} << 20U;

/// The deepest source that the library lets through needs a sixteenth of it, in bytes.
constexpr std::size_t kStack = std::size_t{64} << 20U;

/// What a compiler has done that gave no answer.
constexpr const char* kCrashed =
    " crashes on this text, or takes more than a minute, so there is no verdict";

Verdict NoVerdict(const std::string& reason)
{
    VerdictMessage message;
    message.isMissing = true;
    message.text = reason;
    return {message};
}

/// An answer as a text, which comes from another process.
std::string ToText(const Verdict& answer)
{
    Json::Value list(Json::arrayValue);
    for (const VerdictMessage& message : answer) {
        Json::Value& entry = list.append(Json::arrayValue);
        entry.append(message.stage);
        entry.append(message.line);
        entry.append(message.word);
        entry.append(message.text);
        entry.append(message.isWarning);
        entry.append(message.isMissing);
    }
    return FormatJsonLine(list);
}

Verdict FromText(const std::string& text)
{
    Verdict answer;
    for (const Json::Value& entry : ParseJson(text)) {
        answer.push_back({entry[0].asInt(), entry[1].asInt(), entry[2].asString(),
                          entry[3].asString(), entry[4].asBool(), entry[5].asBool()});
    }
    return answer;
}

/// What of a text a compiler compares with the other stage's: what is before the entry function.
std::string DeclarationsOf(const CheckedText& text)
{
    return text.code.substr(0, text.code.find("void main"));
}

}  // namespace

Judges::Judges(const std::string& direct3dCompiler)
{
    judges.push_back(MakeDirect3dJudge(direct3dCompiler, direct3dReason));
    judges.push_back(MakeGlslangJudge());
    judges.erase(std::remove(judges.begin(), judges.end(), nullptr), judges.end());
}

const Judge* Judges::For(const ns_ruke::TargetInfo& target) const
{
    const auto judge = std::find_if(judges.begin(), judges.end(),
                                    [&](const auto& one) { return one->Takes(target); });
    return judge != judges.end() ? judge->get() : nullptr;
}

std::vector<std::string> Judges::DescribeMissing(const std::vector<std::string>& targets) const
{
    std::string hlsl;
    std::string others;
    for (const std::string& name : targets) {
        const ns_ruke::TargetInfo& target = *ns_ruke::FindTargetInfo(name);
        if (For(target) == nullptr) {
            std::string& names = target.Has(ns_ruke::kHlsl) ? hlsl : others;
            names += (names.empty() ? "" : " and ") + name;
        }
    }
    std::vector<std::string> notes;
    if (!hlsl.empty()) {
        notes.push_back("no compiler judges " + hlsl + ": " + direct3dReason);
    }
    if (!others.empty()) {
        notes.push_back("no compiler judges " + others + ": this morlc was built without glslang");
    }
    return notes;
}

Verdicts::Verdicts(const Judges& judges, const std::vector<Unit>& newUnits,
                   const CheckedUnits& newChecked, std::size_t newJobs, bool newIsQuiet)
    : units(newUnits), checked(newChecked), jobs(newJobs), isQuiet(newIsQuiet)
{
    AskAboutTexts(judges);
    AskAboutPairs();
}

void Verdicts::AskAboutTexts(const Judges& judges)
{
    for (std::size_t i = 0; i < units.size(); ++i) {
        const std::string& target = units[i].context.target;
        AddText(judges, target, checked[i].vertex, nullptr);
        AddText(judges, target, nullptr, checked[i].fragment);
    }
    AskAll(texts);
}

void Verdicts::AddText(const Judges& judges, const std::string& target, const CheckedText* vertex,
                       const CheckedText* fragment)
{
    const CheckedText* const text = vertex != nullptr ? vertex : fragment;
    const ns_ruke::TargetInfo* const info = ns_ruke::FindTargetInfo(target);
    const Judge* const judge = info != nullptr ? judges.For(*info) : nullptr;
    if (text != nullptr && judge != nullptr && textNumbers.emplace(text, texts.size()).second) {
        texts.push_back({judge, info, vertex, fragment, {}});
    }
}

void Verdicts::AskAboutPairs()
{
    const auto isValid = [&](const CheckedText* text) {
        const auto number = text != nullptr ? textNumbers.find(text) : textNumbers.end();
        return number != textNumbers.end() && texts[number->second].answer.empty();
    };
    for (std::size_t i = 0; i < units.size(); ++i) {
        const CheckedUnit& unit = checked[i];
        if (!isValid(unit.vertex) || !isValid(unit.fragment)) {
            continue;
        }
        const Question& text = texts[textNumbers[unit.vertex]];
        if (text.judge->Links(*text.target) &&
            pairNumbers.emplace(KeyOf(units[i].context.target, unit), pairs.size()).second) {
            pairs.push_back({text.judge, text.target, unit.vertex, unit.fragment, {}});
        }
    }
    AskAll(pairs);
}

Verdicts::PairKey Verdicts::KeyOf(const std::string& target, const CheckedUnit& unit)
{
    return {target, DeclarationsOf(*unit.vertex), DeclarationsOf(*unit.fragment)};
}

// Compilers are other people's programs, and some texts crash them.
void Verdicts::AskAll(std::vector<Question>& questions) const
{
    Progress progress(questions.size(), "texts", isQuiet);
    const auto work = [&](std::size_t i) {
        Verdict answer;
        RunWithStack(kStack, [&] { answer = Ask(questions[i]); });
        return ToText(answer);
    };
    const auto take = [&](std::size_t i, const std::optional<std::string>& text) {
        Question& question = questions[i];
        question.answer = text ? FromText(*text) : NoVerdict(question.judge->Name() + kCrashed);
        progress.Advance(1);
    };
    RunApart(questions.size(), ThreadCount(jobs, questions.size()), work, take);
}

Verdict Verdicts::Ask(const Question& question)
{
    const auto& [judge, target, vertex, fragment, unused] = question;
    if (vertex != nullptr && fragment != nullptr) {
        return judge->JudgePair(*target, vertex->code, fragment->code);
    }
    const Stage stage = vertex != nullptr ? Stage::Vertex : Stage::Fragment;
    const std::string& code = vertex != nullptr ? vertex->code : fragment->code;
    if (code.size() > kLongest) {
        return NoVerdict("no verdict on a text of " + std::to_string(code.size()) +
                         " bytes; the longest has " + std::to_string(kLongest));
    }
    return judge->JudgeText(*target, stage, code);
}

Verdict Verdicts::Of(std::size_t unit) const
{
    Verdict all;
    for (const CheckedText* text : {checked[unit].vertex, checked[unit].fragment}) {
        const auto found = text != nullptr ? textNumbers.find(text) : textNumbers.end();
        if (found != textNumbers.end()) {
            const Verdict& answer = texts[found->second].answer;
            all.insert(all.end(), answer.begin(), answer.end());
        }
    }
    if (checked[unit].vertex != nullptr && checked[unit].fragment != nullptr) {
        const auto found = pairNumbers.find(KeyOf(units[unit].context.target, checked[unit]));
        if (found != pairNumbers.end()) {
            const Verdict& answer = pairs[found->second].answer;
            all.insert(all.end(), answer.begin(), answer.end());
        }
    }
    return all;
}

}  // namespace morlc
