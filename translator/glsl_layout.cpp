// SPDX-License-Identifier: MIT
#include "morl/translator/glsl_layout.h"

#include "morl/translator/shared_hooks.h"

namespace ns_ruke {

std::string GlslInputLocal(const std::string& name)
{
    return "i" + name;
}

std::string GlslOutputLocal(const std::string& name)
{
    return "ret" + name;
}

std::string GlslStageGlobal(MorlTranslator& translator, MorlDeclare* declare)
{
    std::string text = translator.WriteBuffer(declare->bufferType);
    text.append(" ").append(translator.WriteVariableType(declare));
    text.append(" ").append(declare->name).append(";\n");
    return text;
}

std::string GlslInputCopies(MorlTranslator& translator, const std::vector<MorlDeclare*>& inputs)
{
    std::string text;
    ReserveLines(text, inputs.size());
    for (MorlDeclare* input : inputs) {
        text.append("\t").append(translator.WriteVariableType(input)).append(" ");
        text.append(GlslInputLocal(input->name)).append(" = ").append(input->name).append(";\n");
    }
    return text;
}

std::string GlslOutputLocals(MorlTranslator& translator, const std::vector<MorlDeclare*>& outputs,
                             std::string_view start)
{
    std::string text;
    ReserveLines(text, outputs.size());
    for (MorlDeclare* output : outputs) {
        const std::string type = translator.WriteVariableType(output);
        text.append("\t").append(type).append(" ").append(GlslOutputLocal(output->name));
        text.append(" = ").append(type).append("(").append(start).append(");\n");
    }
    return text;
}

std::string GlslCopyOut(std::string_view target, const MorlDeclare* output)
{
    std::string text = "\t";
    return text.append(target).append(" = ").append(GlslOutputLocal(output->name)).append("; \n");
}

std::string GlslBinding(std::unordered_map<std::string, int>& samplerRegisters,
                        const MorlDeclare* declare, const MorlRegister* binding)
{
    std::string text = BindingText(kGlslSemantics, binding);
    if (binding != nullptr && binding->registerToken == TOKEN_SAUTO) {
        text += SamplerRegister('s', samplerRegisters, declare->name);
    }
    return text;
}

}  // namespace ns_ruke
