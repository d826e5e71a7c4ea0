// SPDX-License-Identifier: MIT
#include "morl/translator/shared_hooks.h"

#include "morl/core/string_helper.h"

namespace ns_ruke {

ENUM_TOKEN BindingToken(const MorlDeclare* declare)
{
    return declare->registerBinding != nullptr ? declare->registerBinding->registerToken
                                               : TOKEN_NONE;
}

std::string Spell(const SpellingTable& table, ENUM_TOKEN token)
{
    return std::string(table.Text(token));
}

std::string StageBuffer(const StageSpellings& buffers, int stage, ENUM_TOKEN token)
{
    switch (stage) {
    case kVertexStage:
        return Spell(buffers.vertex, token);
    case kFragmentStage:
        return Spell(buffers.fragment, token);
    default:
        return Spell(buffers.other, token);
    }
}

std::string FunctionName(const SpellingTable& functions, const MorlFunctionCall* call)
{
    return functions.Has(call->functionToken) ? Spell(functions, call->functionToken) : call->name;
}

std::string RenamedVariable(const std::unordered_map<std::string, std::string>& names,
                            const MorlVariable* variable)
{
    const auto renamed = names.find(variable->name);
    return renamed != names.end() ? renamed->second : variable->name;
}

std::string DeclaredType(MorlTranslator& translator, const MorlDeclare* declare)
{
    return declare->varType != TOKEN_AUTO ? translator.WriteVariableType(declare->varType)
                                          : translator.ConcludeVariableType(BindingToken(declare));
}

std::string BindingText(const SpellingTable& semantics, const MorlRegister* binding)
{
    if (binding == nullptr) {
        return {};
    }
    std::string text = " : ";
    text += binding->registerToken == TOKEN_IDENTIFIER ? std::string_view(binding->name)
                                                       : semantics.Text(binding->registerToken);
    return text;
}

std::string SamplerRegister(char kind, std::unordered_map<std::string, int>& registers,
                            const std::string& name)
{
    std::string text = "register(";
    text += kind;
    text += StringHelper::ConvertToString(registers[name], 10);
    text += ")";
    return text;
}

}  // namespace ns_ruke
