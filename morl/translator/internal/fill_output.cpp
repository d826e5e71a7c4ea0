// SPDX-License-Identifier: MIT
#include "morl/translator/internal/fill_output.h"

#include "morl/ast/internal/ownership.h"

#include <utility>

namespace ns_ruke {
namespace {

using Semantics = std::unordered_map<std::string, std::string>;

std::vector<std::string> Names(const std::vector<MorlDeclare*>& declares)
{
    std::vector<std::string> names;
    names.reserve(declares.size());
    for (const MorlDeclare* declare : declares) {
        names.push_back(declare->name);
    }
    return names;
}

/// Moves assigned semantics into a table. Cannot fail: the table has room for them.
void MoveSemantics(Semantics& assigned, Semantics& table) noexcept
{
    for (auto& [name, semantic] : assigned) {
        const auto entry = table.find(name);
        if (entry != table.end()) {
            entry->second.swap(semantic);
        }
    }
    table.merge(assigned);
}

}  // namespace

// Everything that can fail happens before the first change to `output`.
void FillOutput(std::string code, const std::vector<MorlDeclare*>& uniforms, Semantics assigned,
                ShaderOutput& output)
{
    std::vector<std::string> names = Names(uniforms);
    ReserveMore(output.uniformNames, names.size());
    if (!assigned.empty()) {
        output.semantics.reserve(output.semantics.size() + assigned.size());
        MoveSemantics(assigned, output.semantics);
    }
    for (std::string& name : names) {
        output.uniformNames.push_back(std::move(name));
    }
    output.code = std::move(code);
}

}  // namespace ns_ruke
