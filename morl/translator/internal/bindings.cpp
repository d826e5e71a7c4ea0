// SPDX-License-Identifier: MIT
#include "morl/translator/internal/bindings.h"

#include "morl/core/string_helper.h"

namespace ns_ruke {

ENUM_TOKEN BindingToken(const MorlDeclare* declare)
{
    return declare->registerBinding != nullptr ? declare->registerBinding->registerToken
                                               : TOKEN_NONE;
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
