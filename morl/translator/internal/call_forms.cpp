// SPDX-License-Identifier: MIT
#include "morl/translator/internal/call_forms.h"

namespace ns_ruke {

void AppendTransposed(Text& text, const CallForm& form, const CallArguments& arguments)
{
    constexpr std::string_view kComponents = "xyzw";
    text.Append(form.matrix, '(');
    for (std::size_t component = 0; component < form.arguments; ++component) {
        text.Append(component > 0 ? "," : "", form.vector, '(');
        for (std::size_t i = 0; i < form.arguments; ++i) {
            text.Append(i > 0 ? "," : "", arguments[i], '.', kComponents[component]);
        }
        text.Append(')');
    }
    text.Append(')');
}

void AppendSampling(Text& text, const CallArguments& arguments)
{
    const bool compares = IsShadowMap(arguments[0]);
    text.Append(arguments[0], compares ? ".SampleCmpLevelZero(" : ".Sample(");
    text.Append(kSamplerState, arguments[0], ',', arguments[1]);
    if (compares) {
        text.Append(',', arguments[2]);
    }
    text.Append(')');
}

}  // namespace ns_ruke
