// SPDX-License-Identifier: MIT
// The verdict of glslang, which is linked into the tool.
#include "check/judge.h"

#include <glslang/Public/ResourceLimits.h>
#include <glslang/Public/ShaderLang.h>
#include <morl/morl.h>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>

namespace morlc {
namespace {

/// How a target is compiled.
struct Dialect {
    bool isHlsl;  ///< its stages cannot be linked: both have a block of uniforms of the same name
    int version;
    EShMessages messages;
};

Dialect DialectOf(const ns_ruke::TargetInfo& target)
{
    if (!target.Has(ns_ruke::kHlsl)) {
        return {false, target.version, EShMsgDefault};
    }
    constexpr int kUnversioned = 100;
    constexpr unsigned kMessages = EShMsgReadHlsl | EShMsgSpvRules | EShMsgVulkanRules;
    const bool isOld = target.Has(ns_ruke::kPlainSamplers);
    return {true, kUnversioned,
            static_cast<EShMessages>(kMessages | (isOld ? EShMsgHlslDX9Compatible : 0U))};
}

/// Reads "ERROR: 0:LINE: 'WORD' : TEXT"; the line and the word may be missing.
bool ReadMessage(const std::string& line, int stage, VerdictMessage& message)
{
    const std::string start = "ERROR: ";
    if (line.compare(0, start.size(), start) != 0) {
        return false;
    }
    std::string rest = line.substr(start.size());
    message.stage = stage;
    const bool hasPlace = rest.compare(0, 2, "0:") == 0;
    if (hasPlace) {
        message.line = std::atoi(rest.c_str() + 2);
        rest.erase(0, rest.find(": ") + 2);
    } else if (!rest.empty() && rest[0] >= '0' && rest[0] <= '9') {
        return false;  // the number of errors
    }
    const std::size_t wordEnd = rest.find("' : ");
    if (!rest.empty() && rest[0] == '\'' && wordEnd != std::string::npos) {
        message.word = rest.substr(1, wordEnd - 1);
        const std::size_t text = rest.find_first_not_of(' ', wordEnd + 4);
        rest = rest.substr(std::min(text, rest.size()));
        rest.insert(0, message.word.empty() ? "" : "'" + message.word + "': ");
    }
    message.text = rest.substr(0, rest.find_last_not_of(" \r") + 1);
    // This follows the error that ended it.
    return message.text != "compilation terminated";
}

void AppendMessages(const char* log, int stage, Verdict& messages)
{
    std::istringstream lines(log);
    for (std::string line; messages.size() < kMaxVerdictMessages && std::getline(lines, line);) {
        VerdictMessage message;
        if (ReadMessage(line, stage, message)) {
            // What it had expected follows from what it has told.
            const bool isFollowing = !messages.empty() && message.text.size() > 10 &&
                                     message.text.substr(message.text.size() - 10) == ": Expected";
            if (!isFollowing) {
                messages.push_back(message);
            }
        } else if (line.compare(0, 1, " ") == 0 && !messages.empty() && messages.back().line == 0) {
            messages.back().text += " " + line.substr(line.find_first_not_of(' '));
        }
    }
}

EShLanguage LanguageOf(Stage stage)
{
    return stage == Stage::Vertex ? EShLangVertex : EShLangFragment;
}

/// One text while it is compiled.
class StageText {
public:
    StageText(const Dialect& newDialect, Stage newStage, const std::string& newCode)
        : dialect(newDialect),
          number(static_cast<int>(newStage)),
          code(newCode),
          shader(LanguageOf(newStage))
    {
    }

    /// Whether the text is valid.
    bool Parse(Verdict& messages)
    {
        const char* const strings[] = {code.c_str()};
        shader.setStrings(strings, 1);
        if (dialect.isHlsl) {
            shader.setEnvInput(glslang::EShSourceHlsl, shader.getStage(), glslang::EShClientVulkan,
                               100);
            shader.setEnvClient(glslang::EShClientVulkan, glslang::EShTargetVulkan_1_0);
            shader.setEnvTarget(glslang::EShTargetSpv, glslang::EShTargetSpv_1_0);
            shader.setEntryPoint("main");
            shader.setAutoMapBindings(true);
            shader.setAutoMapLocations(true);
        }
        const bool isValid =
            shader.parse(GetDefaultResources(), dialect.version, false, dialect.messages);
        AppendMessages(shader.getInfoLog(), number, messages);
        return isValid;
    }

    glslang::TShader& Shader() { return shader; }

private:
    const Dialect& dialect;
    int number;
    const std::string& code;
    glslang::TShader shader;
};

void Link(const Dialect& dialect, const std::vector<StageText*>& stages, Verdict& messages)
{
    glslang::TProgram program;
    for (StageText* stage : stages) {
        program.addShader(&stage->Shader());
    }
    if (!program.link(dialect.messages)) {
        AppendMessages(program.getInfoLog(), -1, messages);
    }
}

class GlslangJudge : public Judge {
public:
    GlslangJudge() { glslang::InitializeProcess(); }
    GlslangJudge(const GlslangJudge&) = delete;
    GlslangJudge& operator=(const GlslangJudge&) = delete;
    ~GlslangJudge() override { glslang::FinalizeProcess(); }

    std::string Name() const override { return "glslang"; }

    bool Takes(const ns_ruke::TargetInfo& /*target*/) const override { return true; }

    Verdict JudgeText(const ns_ruke::TargetInfo& target, Stage stage,
                      const std::string& code) const override
    {
        const Dialect dialect = DialectOf(target);
        Verdict messages;
        StageText text(dialect, stage, code);
        if (text.Parse(messages)) {
            Link(dialect, {&text}, messages);
        }
        return messages;
    }

    bool Links(const ns_ruke::TargetInfo& target) const override
    {
        return !DialectOf(target).isHlsl;
    }

    Verdict JudgePair(const ns_ruke::TargetInfo& target, const std::string& vertex,
                      const std::string& fragment) const override
    {
        const Dialect dialect = DialectOf(target);
        StageText vertexText(dialect, Stage::Vertex, vertex);
        StageText fragmentText(dialect, Stage::Fragment, fragment);
        Verdict messages;
        if (vertexText.Parse(messages) && fragmentText.Parse(messages)) {
            Link(dialect, {&vertexText, &fragmentText}, messages);
        }
        return messages;
    }
};

}  // namespace

std::unique_ptr<Judge> MakeGlslangJudge()
{
    return std::make_unique<GlslangJudge>();
}

}  // namespace morlc
