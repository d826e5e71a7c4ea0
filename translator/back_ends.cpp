// SPDX-License-Identifier: MIT
#include "morl/translator/back_ends.h"

#include "morl/translator/glsl.h"
#include "morl/translator/glsles.h"
#include "morl/translator/hlsl.h"
#include "morl/translator/hlsl10.h"

#include <string_view>

namespace ns_ruke {
namespace {

struct BackEnd {
    std::string_view target;
    std::unique_ptr<MorlTranslator> (*make)();
};

template <class Translator>
std::unique_ptr<MorlTranslator> Make()
{
    return std::make_unique<Translator>();
}

constexpr BackEnd kBackEnds[] = {
    {"hlsl", Make<MorlTranslatorHLSL>},
    {"hlsl10", Make<MorlTranslatorHLSL10>},
    {"glsl", Make<MorlTranslatorGLSL>},
    {"glsles", Make<MorlTranslatorGLSLES>},
};

}  // namespace

std::vector<std::string> MorlTargets()
{
    std::vector<std::string> targets;
    for (const BackEnd& backEnd : kBackEnds) {
        targets.emplace_back(backEnd.target);
    }
    return targets;
}

std::unique_ptr<MorlTranslator> MakeTranslator(const std::string& target)
{
    for (const BackEnd& backEnd : kBackEnds) {
        if (backEnd.target == target) {
            return backEnd.make();
        }
    }
    return nullptr;
}

}  // namespace ns_ruke
