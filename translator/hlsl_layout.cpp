// SPDX-License-Identifier: MIT
#include "morl/translator/hlsl_layout.h"

#include "morl/core/string_helper.h"
#include "morl/translator/shared_hooks.h"

namespace ns_ruke {

HlslStructs HlslStructsOf(int stage)
{
    switch (stage) {
    case kVertexStage:
        return {"VS_INPUT", "VS_OUTPUT"};
    case kFragmentStage:
        return {"FS_INPUT", "FS_OUTPUT"};
    default:
        return {"", ""};
    }
}

std::string OpenHlslStruct(std::string_view name)
{
    return std::string("struct ").append(name).append("{\n");
}

std::string HlslBinding(const HlslBindings& bindings, int stage, const MorlDeclare* declare,
                        const MorlRegister* binding)
{
    std::string text = BindingText(bindings.semantics, binding);
    const ENUM_TOKEN token = binding != nullptr ? binding->registerToken : TOKEN_NONE;
    if (token == TOKEN_SAUTO) {
        text += SamplerRegister(bindings.registerKind, bindings.samplerRegisters, declare->name);
    } else if (token == TOKEN_TEXAUTO && stage == kFragmentStage) {
        text += bindings.inputSemantics[declare->name];
    } else if (token == TOKEN_TEXAUTO) {
        std::string& semantic = bindings.outputSemantics[declare->name];
        semantic = "TEXCOORD" + StringHelper::ConvertToString(bindings.texcoordCounter, 10);
        text += semantic;
        ++bindings.texcoordCounter;
    }
    return text;
}

std::string HlslInputMembers(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs,
                             std::unordered_map<std::string, std::string>& variableNames)
{
    std::string text;
    ReserveLines(text, inputs.size());
    for (MorlDeclare* input : inputs) {
        variableNames[input->name] = "i" + input->name;
        text.append("\t").append(translator.WriteVariableType(input)).append(" ");
        text.append(input->name).append(translator.WriteRegister(input, input->registerBinding));
        text += ";\n";
    }
    return text;
}

std::string HlslOutputMember(MorlTranslator& translator, MorlDeclare* output,
                             std::unordered_map<std::string, std::string>& variableNames)
{
    variableNames[output->name] = "output." + output->name;
    std::string text = "\t";
    text.append(translator.WriteVariableType(output)).append(" ").append(output->name);
    text.append(translator.WriteRegister(output, output->registerBinding)).append(";\n");
    return text;
}

std::string HlslInputCopies(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs)
{
    std::string text;
    ReserveLines(text, inputs.size());
    for (MorlDeclare* input : inputs) {
        text.append("\t").append(translator.WriteVariableType(input)).append(" i");
        text.append(input->name).append(" = input.").append(input->name).append(";\n");
    }
    return text;
}

std::string HlslOutputLocal(int stage)
{
    const std::string_view name = HlslStructsOf(stage).output;
    return name.empty() ? std::string() : "\t" + std::string(name) + " output;\n";
}

std::string OpenHlslMain(int stage)
{
    const HlslStructs structs = HlslStructsOf(stage);
    std::string text(structs.output);
    return text.append(" main(").append(structs.input).append(" input){ \n");
}

}  // namespace ns_ruke
