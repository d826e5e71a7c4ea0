// SPDX-License-Identifier: MIT
#include "morl/translator/targets.h"

#include "morl/translator/glsl.h"
#include "morl/translator/glsles.h"
#include "morl/translator/hlsl.h"
#include "morl/translator/hlsl10.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace ns_ruke {
namespace {

struct Target {
    std::string_view name;
    std::unique_ptr<MorlTranslator> (*make)();
    const TargetSpellings& (*spellings)();
};

template <class Translator>
std::unique_ptr<MorlTranslator> Make()
{
    return std::make_unique<Translator>();
}

template <class Translator>
constexpr Target Row(std::string_view name)
{
    return {name, Make<Translator>, Translator::Spellings};
}

/// The only list of targets; anything that concerns all of them uses it.
constexpr Target kTargets[] = {
    Row<MorlTranslatorHLSL>("hlsl"),
    Row<MorlTranslatorHLSL10>("hlsl10"),
    Row<MorlTranslatorGLSL>("glsl"),
    Row<MorlTranslatorGLSLES>("glsles"),
};

const Target* FindTarget(std::string_view name)
{
    const auto* found = std::find_if(std::begin(kTargets), std::end(kTargets),
                                     [&](const Target& target) { return target.name == name; });
    return found != std::end(kTargets) ? found : nullptr;
}

}  // namespace

std::vector<std::string> MorlTargets()
{
    std::vector<std::string> names;
    for (const Target& target : kTargets) {
        names.emplace_back(target.name);
    }
    return names;
}

std::unique_ptr<MorlTranslator> MakeTranslator(const std::string& target)
{
    const Target* found = FindTarget(target);
    return found != nullptr ? found->make() : nullptr;
}

const TargetSpellings* FindSpellings(std::string_view target)
{
    const Target* found = FindTarget(target);
    return found != nullptr ? &found->spellings() : nullptr;
}

}  // namespace ns_ruke
