// SPDX-License-Identifier: MIT
#include "pictures/draw.h"

#include "pictures/translate.h"

#include <morl/morl.h>

namespace pictures {
namespace {

morl_test::SampleTexts AsGlsl(const std::string& target, const morl_test::SampleTexts& texts)
{
    const ns_ruke::TargetInfo& info = *ns_ruke::FindTargetInfo(target);
    return info.Has(ns_ruke::kHlsl) ? GlslOfHlsl(texts, info.Has(ns_ruke::kPlainSamplers)) : texts;
}

}  // namespace

GlContext& Painter::ContextOf(const std::string& target)
{
    return ns_ruke::FindTargetInfo(target)->Has(ns_ruke::kGlslEs) ? es : core;
}

Image Painter::Draw(const std::string& target, const morl_test::SampleTexts& texts)
{
    const morl_test::SampleTexts glsl = AsGlsl(target, texts);
    return ContextOf(target).Draw(glsl.vertex, glsl.fragment);
}

void Painter::Link(const std::string& target, const morl_test::SampleTexts& texts)
{
    const morl_test::SampleTexts glsl = AsGlsl(target, texts);
    ContextOf(target).Link(glsl.vertex, glsl.fragment);
}

}  // namespace pictures
