// SPDX-License-Identifier: MIT
#include "morl/translator/internal/call_forms.h"

namespace ns_ruke {

void AppendTransposed(std::string& text, const CallForm& form, const CallArguments& arguments)
{
    constexpr std::string_view kComponents = "xyzw";
    text.append(form.matrix).append("(");
    for (std::size_t component = 0; component < form.arguments; ++component) {
        text.append(component > 0 ? "," : "").append(form.vector).append("(");
        for (std::size_t i = 0; i < form.arguments; ++i) {
            text.append(i > 0 ? "," : "").append(arguments[i]).append(".");
            text += kComponents[component];
        }
        text += ")";
    }
    text += ")";
}

void AppendSampling(std::string& text, const CallArguments& arguments)
{
    const bool compares = IsShadowMap(arguments[0]);
    text.append(arguments[0]).append(compares ? ".SampleCmpLevelZero(" : ".Sample(");
    text.append(SamplerState(arguments[0])).append(",").append(arguments[1]);
    if (compares) {
        text.append(",").append(arguments[2]);
    }
    text += ")";
}

bool IsShadowMap(std::string_view texture)
{
    constexpr std::string_view kShadowMap = "shadowMap";
    return texture.substr(0, kShadowMap.size()) == kShadowMap;
}

std::string SamplerState(std::string_view texture)
{
    return std::string("sampler_").append(texture);
}

}  // namespace ns_ruke
