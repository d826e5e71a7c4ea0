// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"
#include "morl/ast/program.h"
#include "morl/compiler/pass_report.h"
#include "morl/linker/link_report.h"
#include "morl/translator/internal/text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace ns_ruke {

/// Notes, while a shader is written, where its lines come from.
class WrittenLines {
public:
    /// The arguments must outlive this object.
    WrittenLines(const MorlProgram& program, const LinkReport& link);

    /// The line that is begun now is from this declaration.
    void Mark(const Text& text, const MorlDeclare* declare);
    /// The line that is begun now is from the current statement of `main`.
    /// @param offset in the source of its node, in bytes
    void Mark(const Text& text, std::uint32_t offset) { MarkAt(text.Size(), offset); }
    /// Like Mark, for the line that begins at `position`.
    void MarkAt(std::size_t position, std::uint32_t offset);
    /// The lines that follow are from this statement of `main`.
    void BeginStatement(std::size_t index);

    /// The declarations, in the order in which they were first marked.
    const std::vector<const MorlDeclare*>& Declares() const { return declares; }
    /// Whether `main` uses each of them, in this order.
    void SetUses(std::vector<bool> newUses) { uses = std::move(newUses); }
    bool IsUsed(std::size_t declare) const { return uses[declare]; }
    /// The index of its node in the link's list.
    int NodeOf(const MorlDeclare* declare) { return listed[IndexOf(declare)].node; }

    /// One for each line of the shader.
    std::vector<ReportLine> Resolve(std::string_view code) const;

private:
    struct MarkedPlace {
        std::size_t position;  ///< in the shader
        int node;              ///< its index in the link's list
        std::uint32_t offset;  ///< in the source of the node
    };

    struct ListedDeclare {
        const MorlDeclare* declare;
        int node;
        bool isMarked;
    };

    void List(const std::vector<MorlDeclare*>& list, std::size_t LinkOrigin::*end);
    std::size_t IndexOf(const MorlDeclare* declare);
    std::size_t Search(const MorlDeclare* declare);

    const LinkReport& link;
    std::vector<ListedDeclare> listed;    ///< in the order of the program's lists
    std::vector<std::size_t> byPointer;   ///< indexes of `listed`, once a search needs them
    std::array<std::size_t, 3> starts{};  ///< of the lists in `listed`
    std::size_t next = 0;                 ///< the index that most likely comes next
    std::vector<const MorlDeclare*> declares;
    std::vector<bool> uses;  ///< of these
    std::vector<MarkedPlace> marks;
    std::size_t statementOrigin = 0;  ///< of the current statement
};

}  // namespace ns_ruke
