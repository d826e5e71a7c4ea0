// SPDX-License-Identifier: MIT
#include "morl/translator/targets.h"

#include "morl/translator/glsl.h"
#include "morl/translator/glsles.h"
#include "morl/translator/hlsl.h"
#include "morl/translator/hlsl10.h"

#include <string_view>

namespace ns_ruke {
namespace {

struct Target {
    std::string_view name;
    std::unique_ptr<MorlTargetTranslator> (*make)();
};

template <class Translator>
std::unique_ptr<MorlTargetTranslator> Make()
{
    return std::make_unique<Translator>();
}

/// The only list of targets; anything that concerns all of them uses it.
constexpr Target kTargets[] = {
    {"hlsl", Make<MorlTranslatorHLSL>},
    {"hlsl10", Make<MorlTranslatorHLSL10>},
    {"glsl", Make<MorlTranslatorGLSL>},
    {"glsles", Make<MorlTranslatorGLSLES>},
};

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
    for (const Target& known : kTargets) {
        if (known.name == target) {
            std::unique_ptr<MorlTargetTranslator> translator = known.make();
            translator->isPlain.value = true;
            return translator;
        }
    }
    return nullptr;
}

}  // namespace ns_ruke
