// SPDX-License-Identifier: MIT
// The verdict of glslang, which is linked into the tool.
#include "check/verdict.h"

#include "options.h"
#include "platform.h"

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

/// Prepares glslang once for the process.
void Initialize()
{
    struct Process {
        Process() { glslang::InitializeProcess(); }
        Process(const Process&) = delete;
        Process& operator=(const Process&) = delete;
        ~Process() { glslang::FinalizeProcess(); }
    };
    static const Process process;
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

void AppendMessages(const char* log, int stage, std::vector<VerdictMessage>& messages)
{
    constexpr std::size_t kMaxMessages = 100;  // nobody reads more
    std::istringstream lines(log);
    for (std::string line; messages.size() < kMaxMessages && std::getline(lines, line);) {
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
    bool Parse(std::vector<VerdictMessage>& messages)
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

void Link(const Dialect& dialect, const std::vector<StageText*>& stages,
          std::vector<VerdictMessage>& messages)
{
    glslang::TProgram program;
    for (StageText* stage : stages) {
        program.addShader(&stage->Shader());
    }
    if (!program.link(dialect.messages)) {
        AppendMessages(program.getInfoLog(), -1, messages);
    }
}

/// Longer texts are not judged, in bytes: no shader is a hundredth of this, and a compiler takes
/// more time and memory than anything else in this tool.
constexpr std::size_t kLongest = std::size_t{4} << 20U;

/// The deepest source that the library lets through needs a sixteenth of it, in bytes.
constexpr std::size_t kStack = std::size_t{64} << 20U;

std::vector<VerdictMessage> JudgeHere(const ns_ruke::TargetInfo& info, const std::string& vertex,
                                      const std::string& fragment)
{
    std::vector<VerdictMessage> messages;
    const Dialect dialect = DialectOf(info);
    Initialize();
    StageText vertexStage(dialect, Stage::Vertex, vertex);
    StageText fragmentStage(dialect, Stage::Fragment, fragment);
    const bool isVertexValid = vertex.empty() || vertexStage.Parse(messages);
    const bool isFragmentValid = fragment.empty() || fragmentStage.Parse(messages);
    if (!isVertexValid || !isFragmentValid) {
        return messages;
    }
    if (dialect.isHlsl || vertex.empty() || fragment.empty()) {
        for (StageText* stage : {&vertexStage, &fragmentStage}) {
            if (!(stage == &vertexStage ? vertex : fragment).empty()) {
                Link(dialect, {stage}, messages);
            }
        }
    } else {
        Link(dialect, {&vertexStage, &fragmentStage}, messages);
    }
    return messages;
}

}  // namespace

bool HasVerdict()
{
    return true;
}

std::vector<VerdictMessage> Judge(const std::string& target, const std::string& vertex,
                                  const std::string& fragment)
{
    const ns_ruke::TargetInfo* const info = ns_ruke::FindTargetInfo(target);
    if (info == nullptr) {
        return {};
    }
    const std::size_t size = std::max(vertex.size(), fragment.size());
    if (size > kLongest) {
        VerdictMessage message;
        message.isMissing = true;
        message.text = "no verdict on a text of " + std::to_string(size) +
                       " bytes; the longest has " + std::to_string(kLongest);
        return {message};
    }
    std::vector<VerdictMessage> messages;
    RunWithStack(kStack, [&] { messages = JudgeHere(*info, vertex, fragment); });
    return messages;
}

}  // namespace morlc
