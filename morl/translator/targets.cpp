// SPDX-License-Identifier: MIT
#include "morl/translator/targets.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/target_record.h"

#include <algorithm>
#include <iterator>

namespace ns_ruke {

/// A target in the list of all targets.
struct TargetRow {
    template <class Translator>
    static constexpr TargetRow Of()
    {
        return {Translator::Record, Make<Translator>};
    }

    template <class Translator>
    static std::unique_ptr<MorlTranslator> Make()
    {
        return std::make_unique<Translator>();
    }

    const TargetRecord& (*record)();
    std::unique_ptr<MorlTranslator> (*make)();
};

namespace {

/// The only list of targets; anything that concerns all of them uses it.
constexpr TargetRow kTargets[] = {
    TargetRow::Of<MorlTranslatorHLSL>(),
    TargetRow::Of<MorlTranslatorHLSL10>(),
    TargetRow::Of<MorlTranslatorGLSL>(),
    TargetRow::Of<MorlTranslatorGLSLES>(),
};

const TargetRow* FindRow(std::string_view name)
{
    const auto* found =
        std::find_if(std::begin(kTargets), std::end(kTargets),
                     [&](const TargetRow& target) { return target.record().info.name == name; });
    return found != std::end(kTargets) ? found : nullptr;
}

/// Reserved in GLSL.
bool HasTwoUnderscores(std::string_view name)
{
    return name.find("__") != std::string_view::npos;
}

}  // namespace

std::vector<std::string> MorlTargets()
{
    std::vector<std::string> names;
    for (const TargetRow& target : kTargets) {
        names.emplace_back(target.record().info.name);
    }
    return names;
}

std::unique_ptr<MorlTranslator> MakeTranslator(const std::string& target)
{
    const TargetRow* found = FindRow(target);
    return found != nullptr ? found->make() : nullptr;
}

const TargetInfo* FindTargetInfo(std::string_view target)
{
    const TargetRecord* found = FindTarget(target);
    return found != nullptr ? &found->info : nullptr;
}

const TargetRecord* FindTarget(std::string_view name)
{
    const TargetRow* found = FindRow(name);
    return found != nullptr ? &found->record() : nullptr;
}

bool IsReservedWord(std::string_view name, const TargetRecord& target)
{
    return target.reservedWords.Contains(name) || target.moreReservedWords.Contains(name) ||
           (target.info.Has(kGlsl) && (HasTwoUnderscores(name) || name.substr(0, 3) == "gl_"));
}

std::string_view WrittenType(const MorlDeclare& declare, const TargetRecord& target)
{
    return declare.varType != TOKEN_AUTO ? target.types.Text(declare.varType)
                                         : target.autoTypes.Text(BindingToken(&declare));
}

}  // namespace ns_ruke
