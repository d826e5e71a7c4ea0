// SPDX-License-Identifier: MIT
#include "pictures/draw.h"

#include "pictures/translate.h"

namespace pictures {
namespace {

morl_test::SampleTexts AsGlsl(const std::string& target, const morl_test::SampleTexts& texts)
{
    const bool isHlsl = target.compare(0, 4, "hlsl") == 0;
    return isHlsl ? GlslOfHlsl(texts, target == "hlsl") : texts;
}

}  // namespace

GlContext& Painter::ContextOf(const std::string& target)
{
    return target == "glsles" ? es : core;
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
