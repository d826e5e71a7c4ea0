// SPDX-License-Identifier: MIT
#include "morl/translator/internal/fill_output.h"

#include "morl/ast/internal/ownership.h"

#include <cstddef>
#include <utility>

namespace ns_ruke {
namespace {

using Semantics = std::unordered_map<std::string, std::string>;

/// Appends the names of declarations, all or none.
void AppendNames(const std::vector<MorlDeclare*>& declares, std::vector<std::string>& names)
{
    const std::size_t before = names.size();
    ReserveMore(names, declares.size());
    try {
        for (const MorlDeclare* declare : declares) {
            names.push_back(declare->name);
        }
    } catch (...) {
        names.resize(before);
        throw;
    }
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

void FillOutput(std::string code, const std::vector<MorlDeclare*>& uniforms, Semantics assigned,
                ShaderOutput& output)
{
    if (!assigned.empty()) {
        output.semantics.reserve(output.semantics.size() + assigned.size());
    }
    AppendNames(uniforms, output.uniformNames);
    // From here on nothing can fail.
    MoveSemantics(assigned, output.semantics);
    output.code = std::move(code);
}

}  // namespace ns_ruke
