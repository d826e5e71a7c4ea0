// SPDX-License-Identifier: MIT
#include "shader_path.h"

#include <glslang/Public/ResourceLimits.h>
#include <glslang/Public/ShaderLang.h>
#include <glslang/SPIRV/GlslangToSpv.h>
#include <spirv_cross/spirv_cross_c.h>
#include <map>
#include <stdexcept>
#include <vector>

namespace morl_bench {
namespace {

constexpr auto kSpirvMessages = static_cast<EShMessages>(EShMsgReadHlsl | EShMsgSpvRules);

EShLanguage Language(int stage)
{
    return stage == 0 ? EShLangVertex : EShLangFragment;
}

void Parse(glslang::TShader& shader, const std::string& text, int version, EShMessages messages)
{
    const char* const strings[] = {text.c_str()};
    shader.setStrings(strings, 1);
    if (!shader.parse(GetDefaultResources(), version, false, messages)) {
        throw std::runtime_error(std::string("glslang refused a sample: ") + shader.getInfoLog());
    }
}

void PrepareHlsl(glslang::TShader& shader, int stage)
{
    shader.setEnvInput(glslang::EShSourceHlsl, Language(stage), glslang::EShClientOpenGL, 100);
    shader.setEnvClient(glslang::EShClientOpenGL, glslang::EShTargetOpenGL_450);
    shader.setEnvTarget(glslang::EShTargetSpv, glslang::EShTargetSpv_1_0);
    shader.setEntryPoint("main");
    shader.setAutoMapBindings(true);
    shader.setAutoMapLocations(true);
}

std::vector<unsigned> ToSpirv(const std::string& text, int stage)
{
    glslang::TShader shader(Language(stage));
    PrepareHlsl(shader, stage);
    Parse(shader, text, 100, kSpirvMessages);
    glslang::TProgram program;
    program.addShader(&shader);
    if (!program.link(kSpirvMessages) || !program.mapIO()) {
        throw std::runtime_error(std::string("glslang linked no sample: ") + program.getInfoLog());
    }
    std::vector<unsigned> spirv;
    glslang::GlslangToSpv(*program.getIntermediate(Language(stage)), spirv);
    return spirv;
}

/// A language as SPIRV-Cross writes it.
struct Dialect {
    spvc_backend backend;
    spvc_compiler_option versionOption;
    unsigned version;
    bool isEs;
};

const std::map<std::string, Dialect> kDialects = {
    {"hlsl", {SPVC_BACKEND_HLSL, SPVC_COMPILER_OPTION_HLSL_SHADER_MODEL, 30, false}},
    {"hlsl10", {SPVC_BACKEND_HLSL, SPVC_COMPILER_OPTION_HLSL_SHADER_MODEL, 40, false}},
    {"glsl", {SPVC_BACKEND_GLSL, SPVC_COMPILER_OPTION_GLSL_VERSION, 150, false}},
    {"glsles", {SPVC_BACKEND_GLSL, SPVC_COMPILER_OPTION_GLSL_VERSION, 100, true}},
};

void Expect(spvc_result result, spvc_context context)
{
    if (result != SPVC_SUCCESS) {
        const std::string error = spvc_context_get_last_error_string(context);
        spvc_context_destroy(context);
        throw std::runtime_error("SPIRV-Cross refused a sample: " + error);
    }
}

}  // namespace

void ParseWithGlslang(const std::string& target, const std::string& text, int stage)
{
    glslang::TShader shader(Language(stage));
    if (target == "hlsl10") {
        PrepareHlsl(shader, stage);
        Parse(shader, text, 100, kSpirvMessages);
    } else {
        Parse(shader, text, target == "glsles" ? 100 : 150, EShMsgDefault);
    }
}

std::size_t TranslateWithSpirvCross(const std::string& target, const std::string& text, int stage)
{
    const std::vector<unsigned> spirv = ToSpirv(text, stage);
    const Dialect& dialect = kDialects.at(target);
    spvc_context context = nullptr;
    spvc_context_create(&context);
    spvc_parsed_ir ir = nullptr;
    spvc_compiler compiler = nullptr;
    spvc_compiler_options options = nullptr;
    Expect(spvc_context_parse_spirv(context, spirv.data(), spirv.size(), &ir), context);
    Expect(spvc_context_create_compiler(context, dialect.backend, ir,
                                        SPVC_CAPTURE_MODE_TAKE_OWNERSHIP, &compiler),
           context);
    Expect(spvc_compiler_create_compiler_options(compiler, &options), context);
    spvc_compiler_options_set_uint(options, dialect.versionOption, dialect.version);
    spvc_compiler_options_set_bool(options, SPVC_COMPILER_OPTION_GLSL_ES,
                                   dialect.isEs ? SPVC_TRUE : SPVC_FALSE);
    Expect(spvc_compiler_install_compiler_options(compiler, options), context);
    Expect(spvc_compiler_build_combined_image_samplers(compiler), context);
    const char* code = nullptr;
    Expect(spvc_compiler_compile(compiler, &code), context);
    const std::size_t bytes = std::char_traits<char>::length(code);
    spvc_context_destroy(context);
    return bytes;
}

}  // namespace morl_bench
